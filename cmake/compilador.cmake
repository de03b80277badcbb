# Everything that depends on the compiler stands here, and nowhere else.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_C_EXTENSIONS OFF)
if(PROJECT_IS_TOP_LEVEL)
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
endif()

set(LUMODIR_SANEADORES "" CACHE STRING "Sanitizers of a native build, as for -fsanitize=")
set(LUMODIR_COBERTURA OFF CACHE BOOL "Count what runs of src/ (tools/coverage; GCC)")
set(LUMODIR_PDB OFF CACHE BOOL "Optimise as a whole, with debug information in .pdb files (Clang and LLD)")
set(LUMODIR_TRAMPA_UB OFF CACHE BOOL "Undefined behaviour traps (MinGW has no sanitizer runtime)")

# The options of everything that is ours.
add_library(lumodir_opciones INTERFACE)

if(MSVC)
  # Its front end judges as Clang does, and speaks with both tongues.
  target_compile_options(lumodir_opciones INTERFACE
    /W4 $<$<BOOL:$<TARGET_PROPERTY:LUMODIR_JUNTO>>:/wd4459> /utf-8 /permissive- /Zc:__cplusplus
    $<$<BOOL:${LUMODIR_AVISOS_SON_ERRORES}>:/WX>)
  target_compile_definitions(lumodir_opciones INTERFACE _CRT_SECURE_NO_WARNINGS)
  # Calls through pointers go only to functions; returns only to callers (control-flow guard, shadow stacks).
  target_compile_options(lumodir_opciones INTERFACE /guard:cf)
  target_link_options(lumodir_opciones INTERFACE /Brepro /guard:cf /CETCOMPAT)
  # What a package manager has chosen stays.
  if(PROJECT_IS_TOP_LEVEL AND NOT DEFINED CMAKE_MSVC_RUNTIME_LIBRARY)
    set(CMAKE_MSVC_RUNTIME_LIBRARY "MultiThreaded$<$<CONFIG:Debug>:Debug>")
  endif()
else()
  target_compile_options(lumodir_opciones INTERFACE
    -Wall -Wextra -Wconversion $<$<NOT:$<BOOL:$<TARGET_PROPERTY:LUMODIR_JUNTO>>>:-Wshadow>
    $<$<BOOL:${LUMODIR_AVISOS_SON_ERRORES}>:-Werror>)
  if(LUMODIR_COBERTURA)
    # Whole counters whatever the threads; no branch that only the optimiser has made. The tests are counted too,
    # for the copy of an inline function that the linker keeps may be theirs. Counters are written to the full paths
    # of the objects.
    target_compile_options(lumodir_opciones INTERFACE --coverage -O0 -fprofile-update=atomic -fprofile-abs-path)
    add_link_options(--coverage)
  else()
    # No path of the building machine in the product.
    target_compile_options(lumodir_opciones INTERFACE
      -ffile-prefix-map=${PROJECT_SOURCE_DIR}/= -ffile-prefix-map=${PROJECT_BINARY_DIR}/=)
  endif()
  if(WIN32)
    # No runtime libraries to ship, and the same bytes from the same sources at any time.
    target_link_options(lumodir_opciones INTERFACE -static -Wl,--no-insert-timestamp)
    # Addresses that nobody can foretell, no code in data: most linkers do so unasked.
    target_link_options(lumodir_opciones INTERFACE
      -Wl,--dynamicbase -Wl,--high-entropy-va -Wl,--nxcompat
      $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-Wl,--tsaware>)
    if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
      # Returns only to callers (shadow stacks), a mark that GNU's linker does not know. Calls through pointers only to
      # functions: from Clang 16 and MinGW-w64 11 on, where that was built with what the loader wants to know of them.
      # Without it LLD warns and sets a mark that means nothing.
      target_link_options(lumodir_opciones INTERFACE -Wl,-Xlink=-cetcompat)
      include(CheckCXXSourceCompiles)
      set(CMAKE_REQUIRED_FLAGS -mguard=cf)
      set(CMAKE_REQUIRED_LINK_OPTIONS -mguard=cf)
      check_cxx_source_compiles("int main() { return 0; }" LUMODIR_GUARDIA FAIL_REGEX _load_config_used)
      unset(CMAKE_REQUIRED_FLAGS)
      unset(CMAKE_REQUIRED_LINK_OPTIONS)
      if(LUMODIR_GUARDIA)
        target_compile_options(lumodir_opciones INTERFACE -mguard=cf)
        target_link_options(lumodir_opciones INTERFACE -mguard=cf)
      endif()
    endif()
  endif()
  if(LUMODIR_PDB)
    # Code that is made at the link alone: what Clang notes of a compilation for the .pdb, its command line with all its
    # folders, does not get into it. Sources are told relative to the root.
    target_compile_options(lumodir_opciones INTERFACE -g -gcodeview -flto -ffile-prefix-map=/usr/=toolchain/
      -fdebug-compilation-dir=.)
    target_link_options(lumodir_opciones INTERFACE -flto -O2 -Wl,--gc-sections -Wl,-Xlink=-pdbsourcepath:lumodir)
  endif()
  # These reach GoogleTest too: mixed objects would disagree about wchar_t or report false errors.
  if(LUMODIR_SOLO_TEXTO)
    add_compile_options(-fshort-wchar)
  endif()
  if(LUMODIR_SANEADORES)
    add_compile_options(-fsanitize=${LUMODIR_SANEADORES} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${LUMODIR_SANEADORES})
  endif()
  if(LUMODIR_TRAMPA_UB)
    target_compile_options(lumodir_opciones INTERFACE -fsanitize=undefined -fsanitize-undefined-trap-on-error)
  endif()
endif()

# What only GNU's compilers take does not get into the product: Clang knows it by name.
set(LUMODIR_OPCIONES_NORMA "")
if(CMAKE_CXX_COMPILER_ID STREQUAL Clang AND NOT MSVC)
  set(LUMODIR_OPCIONES_NORMA -Wpedantic -Wgnu)
endif()

# Tests are compiled once and run once: hardly any optimisation, which also spares the compiler's false alarms about
# string operations that it has inlined. With none at all, each small function has sections of its own, and the time of
# GNU's linker goes with the square of their number. On Linux the sanitizers cost more than that saves, so there it stays
# as it is.
set(LUMODIR_OPCIONES_PRUEBA "")
if(WIN32 AND NOT MSVC)
  set(LUMODIR_OPCIONES_PRUEBA -Og)
endif()
# GoogleTest's own code is neither measured nor examined.
set(LUMODIR_OPCIONES_GTEST "")
if(NOT MSVC)
  set(LUMODIR_OPCIONES_GTEST -O0)
  if(LUMODIR_SANEADORES)
    list(APPEND LUMODIR_OPCIONES_GTEST -fno-sanitize=all)
  endif()
endif()

if(WIN32)
  target_compile_definitions(lumodir_opciones INTERFACE UNICODE _UNICODE WINVER=0x0601 _WIN32_WINNT=0x0601)
endif()

# The DLL gets its .pdb, by its plain name, beside it. The command gets none: names of what it gives to templates would
# have the folders of the machine in them.
function(lumodir_con_pdb objetivo fichero)
  if(LUMODIR_PDB)
    target_link_options(${objetivo} PRIVATE -Wl,--pdb=bin/${fichero} -Wl,-Xlink=-pdbaltpath:${fichero})
    if(LUMODIR_INSTALA)
      install(FILES ${PROJECT_BINARY_DIR}/bin/${fichero} DESTINATION bin)
    endif()
  endif()
endfunction()
