# Carries out the port as vcpkg would, as far as that can be known without vcpkg (tools/package --check):
#     cmake -DCARPETA=<an empty folder> -P packaging/vcpkg/sin_vcpkg.cmake
# Its functions are stand-ins that configure, build and install with the preset mingw-release's toolchain.
set(CURRENT_PACKAGES_DIR ${CARPETA}/paquete)
set(PORT lumodir)
set(VCPKG_TARGET_IS_MINGW ON)

function(vcpkg_check_linkage)
  if(NOT "${ARGN}" STREQUAL "ONLY_DYNAMIC_LIBRARY")
    message(FATAL_ERROR "the library is a DLL: ${ARGN}")
  endif()
endfunction()

function(vcpkg_cmake_configure)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "SOURCE_PATH" "OPTIONS")
  execute_process(COMMAND ${CMAKE_COMMAND} -S ${arg_SOURCE_PATH} -B ${CARPETA}/build -G Ninja -DCMAKE_BUILD_TYPE=Release
                          -DCMAKE_TOOLCHAIN_FILE=${arg_SOURCE_PATH}/cmake/mingw-w64.cmake
                          -DCMAKE_INSTALL_PREFIX=${CURRENT_PACKAGES_DIR} ${arg_OPTIONS}
                  COMMAND_ERROR_IS_FATAL ANY)
  file(STRINGS ${CARPETA}/build/CMakeCache.txt detiene REGEX "^LUMODIR_AVISOS_SON_ERRORES:.*=ON$")
  if(detiene)
    message(FATAL_ERROR "what another compiler warns of would stop the port")
  endif()
endfunction()

function(vcpkg_cmake_install)
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${CARPETA}/build --target install COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(vcpkg_copy_pdbs)
endfunction()

function(vcpkg_fixup_pkgconfig)
endfunction()

include(${CMAKE_CURRENT_LIST_DIR}/ports/lumodir/portfile.cmake)
