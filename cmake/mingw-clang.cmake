# Toolchain: 64-bit Windows from Clang and LLD, with the headers and libraries of Debian's MinGW-w64. LLD can write debug
# information as Windows' own debuggers read it (preset mingw-package).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-windows-gnu)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-windows-gnu)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
# Debian keeps those of GCC's libraries in a folder that bears the kind of its threads, where Clang looks for none.
execute_process(COMMAND x86_64-w64-mingw32-g++-posix -print-file-name=include/c++
                OUTPUT_VARIABLE lumodir_cpp OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND x86_64-w64-mingw32-g++-posix -print-libgcc-file-name
                OUTPUT_VARIABLE lumodir_libgcc OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
get_filename_component(lumodir_libgcc "${lumodir_libgcc}" DIRECTORY)
string(CONCAT CMAKE_CXX_FLAGS_INIT
  "-stdlib++-isystem ${lumodir_cpp} -stdlib++-isystem ${lumodir_cpp}/x86_64-w64-mingw32 "
  "-stdlib++-isystem ${lumodir_cpp}/backward")
# First the folder below that of the build, where a copy of GNU's C++ library is put that LLD understands
# (para_lld.cmake); by its place there, which is the same wherever the build is.
foreach(tipo EXE SHARED MODULE)
  set(CMAKE_${tipo}_LINKER_FLAGS_INIT
      "-fuse-ld=lld -Lpara_lld -L${lumodir_libgcc} -Wno-unused-command-line-argument")
endforeach()
set(CMAKE_PROJECT_INCLUDE ${CMAKE_CURRENT_LIST_DIR}/para_lld.cmake)
# What libstdc++ stands on; Clang does not add it.
set(CMAKE_CXX_STANDARD_LIBRARIES "-lpthread")
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/con_wine)
