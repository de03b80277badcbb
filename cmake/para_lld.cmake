# Makes the copy of GNU's C++ library that LLD is given (mingw-clang.cmake); para_lld.pl says why.
set(lumodir_original ${lumodir_libgcc}/libstdc++.a)
set(lumodir_copia ${CMAKE_BINARY_DIR}/para_lld/libstdc++.a)
if(NOT EXISTS ${lumodir_copia} OR ${lumodir_original} IS_NEWER_THAN ${lumodir_copia}
   OR ${CMAKE_CURRENT_LIST_DIR}/para_lld.pl IS_NEWER_THAN ${lumodir_copia})
  find_program(LUMODIR_PERL perl REQUIRED)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/para_lld)
  execute_process(COMMAND ${LUMODIR_PERL} ${CMAKE_CURRENT_LIST_DIR}/para_lld.pl ${lumodir_original} ${lumodir_copia}
                  COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${CMAKE_RANLIB} -D ${lumodir_copia} COMMAND_ERROR_IS_FATAL ANY)
endif()
