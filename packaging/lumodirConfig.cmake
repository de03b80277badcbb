# find_package(lumodir) gives the target lumodir::lumodir: the headers, the import library and the DLL, for 64-bit
# Windows programs made with MinGW-w64 or with MSVC. The package may lie anywhere.
#
# A program needs lumodir.dll beside it, or on PATH. This copies it there after each build:
#     add_custom_command(TARGET program POST_BUILD
#         COMMAND ${CMAKE_COMMAND} -E copy_if_different $<TARGET_RUNTIME_DLLS:program> $<TARGET_FILE_DIR:program>
#         COMMAND_EXPAND_LISTS)

get_filename_component(_lumodir_raiz "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)

if(NOT WIN32)
  set(lumodir_FOUND FALSE)
  set(lumodir_NOT_FOUND_MESSAGE "lumodir is a library for Windows; cross-compile with a toolchain file for it")
  return()
endif()

set(_lumodir_importacion "${_lumodir_raiz}/lib/liblumodir.dll.a")
if(MSVC)
  # Its linker wants an import library of its own kind: that of a package which MSVC made, or one made here of the
  # list of exports, once per build folder.
  set(_lumodir_importacion "${_lumodir_raiz}/lib/lumodir.lib")
  set(_lumodir_def "${_lumodir_raiz}/lib/lumodir.def")
  if(NOT EXISTS "${_lumodir_importacion}")
    set(_lumodir_importacion "${CMAKE_BINARY_DIR}/lumodir.lib")
    if("${_lumodir_def}" IS_NEWER_THAN "${_lumodir_importacion}")
      execute_process(
        COMMAND "${CMAKE_AR}" /nologo /machine:x64 "/def:${_lumodir_def}" "/out:${_lumodir_importacion}"
        RESULT_VARIABLE _lumodir_resultado OUTPUT_VARIABLE _lumodir_salida ERROR_VARIABLE _lumodir_salida)
      if(NOT _lumodir_resultado EQUAL 0)
        set(lumodir_FOUND FALSE)
        set(lumodir_NOT_FOUND_MESSAGE "no import library could be made of lumodir.def: ${_lumodir_salida}")
        return()
      endif()
    endif()
  endif()
endif()

if(NOT TARGET lumodir::lumodir)
  add_library(lumodir::lumodir SHARED IMPORTED)
  set_target_properties(lumodir::lumodir PROPERTIES
    IMPORTED_LOCATION "${_lumodir_raiz}/bin/lumodir.dll"
    IMPORTED_IMPLIB "${_lumodir_importacion}"
    INTERFACE_INCLUDE_DIRECTORIES "${_lumodir_raiz}/include/lumodir")
endif()
