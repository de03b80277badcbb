# The copy of GNU's C++ library that programs are linked with by LLD (mingw-clang.cmake), and why: para_lld.pl.
set(lumodir_original ${lumodir_libgcc}/libstdc++.a)
set(lumodir_copia ${CMAKE_BINARY_DIR}/para_lld/libstdc++.a)
if(NOT ${lumodir_copia} IS_NEWER_THAN ${lumodir_original} OR NOT ${lumodir_copia} IS_NEWER_THAN ${CMAKE_CURRENT_LIST_DIR}/para_lld.pl)
  find_program(LUMODIR_PERL perl REQUIRED)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/para_lld)
  execute_process(COMMAND ${LUMODIR_PERL} ${CMAKE_CURRENT_LIST_DIR}/para_lld.pl ${lumodir_original} ${lumodir_copia}
                  COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${CMAKE_RANLIB} -D ${lumodir_copia} COMMAND_ERROR_IS_FATAL ANY)
endif()
