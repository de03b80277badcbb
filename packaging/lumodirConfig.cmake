# find_package(lumodir) gives the target lumodir::lumodir: the headers, the import library and the DLL, for 64-bit
# Windows programs made with MinGW-w64 or with MSVC. The package may lie anywhere.
#
# A program needs lumodir.dll beside it, or on PATH. This copies it there after each build:
#     add_custom_command(TARGET program POST_BUILD
#         COMMAND ${CMAKE_COMMAND} -E copy_if_different $<TARGET_RUNTIME_DLLS:program> $<TARGET_FILE_DIR:program>
#         COMMAND_EXPAND_LISTS VERBATIM)

get_filename_component(_lumodir_raiz "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)

if(NOT WIN32)
  set(lumodir_FOUND FALSE)
  set(lumodir_NOT_FOUND_MESSAGE "lumodir is a library for Windows; cross-compile with a toolchain file for it")
  return()
endif()

# The DLL is for 64-bit x86. What CMake calls the processor may be that of the machine: the compiler is asked.
foreach(_lumodir_lengua C CXX)
  if(CMAKE_${_lumodir_lengua}_COMPILER_LOADED)
    if(CMAKE_${_lumodir_lengua}_COMPILER_ARCHITECTURE_ID)
      set(_lumodir_para "${CMAKE_${_lumodir_lengua}_COMPILER_ARCHITECTURE_ID}")
    elseif(CMAKE_${_lumodir_lengua}_COMPILER_TARGET)
      set(_lumodir_para "${CMAKE_${_lumodir_lengua}_COMPILER_TARGET}")
    else()
      execute_process(COMMAND "${CMAKE_${_lumodir_lengua}_COMPILER}" -dumpmachine
                      OUTPUT_VARIABLE _lumodir_para OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    endif()
    if(_lumodir_para AND NOT _lumodir_para MATCHES "^(x64|AMD64|x86_64.*|amd64.*)$")
      set(lumodir_FOUND FALSE)
      set(lumodir_NOT_FOUND_MESSAGE "this lumodir is for x64; the compiler makes programs for ${_lumodir_para}")
      return()
    endif()
  endif()
endforeach()

set(_lumodir_importacion "${_lumodir_raiz}/lib/liblumodir.dll.a")
if(MSVC)
  set(_lumodir_importacion "${_lumodir_raiz}/lib/lumodir.lib")
  if(NOT EXISTS "${_lumodir_importacion}")
    set(lumodir_FOUND FALSE)
    set(lumodir_NOT_FOUND_MESSAGE
      "this package was made without ${_lumodir_importacion}; make it: lib /def:lumodir.def /machine:x64")
    return()
  endif()
endif()

if(NOT TARGET lumodir::lumodir)
  add_library(lumodir::lumodir SHARED IMPORTED)
  set_target_properties(lumodir::lumodir PROPERTIES
    IMPORTED_LOCATION "${_lumodir_raiz}/bin/lumodir.dll"
    IMPORTED_IMPLIB "${_lumodir_importacion}"
    INTERFACE_INCLUDE_DIRECTORIES "${_lumodir_raiz}/include/lumodir")
  if(MSVC AND EXISTS "${_lumodir_raiz}/lib/lumodir.natvis")
    # How the debugger shows the library's types goes into the program's own debug information.
    target_link_options(lumodir::lumodir INTERFACE "/NATVIS:${_lumodir_raiz}/lib/lumodir.natvis")
  endif()
endif()
