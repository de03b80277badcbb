# An overlay port, for the sources that it lies in:
#     vcpkg install lumodir --overlay-ports=<lumodir>/packaging/vcpkg/ports
# There is no public archive of them yet; with one, vcpkg_from_github stands here. tools/package carries out this file with
# stand-ins for vcpkg's functions, and builds what it asks for; nobody has run vcpkg on it.
vcpkg_check_linkage(ONLY_DYNAMIC_LIBRARY)
get_filename_component(SOURCE_PATH "${CMAKE_CURRENT_LIST_DIR}/../../../.." ABSOLUTE)

# The library alone; a compiler that warns of more than the project's own does not stop it.
vcpkg_cmake_configure(
    SOURCE_PATH "${SOURCE_PATH}"
    OPTIONS
        -DLUMODIR_TESTS=OFF
        -DLUMODIR_BENCH=OFF
        -DLUMODIR_ORDEN=OFF
        -DLUMODIR_AVISOS_SON_ERRORES=OFF
)
vcpkg_cmake_install()
# The project's own package file finds everything from where it lies: below lib/cmake, not below share as most do.
set(VCPKG_POLICY_SKIP_MISPLACED_CMAKE_FILES_CHECK enabled)
set(VCPKG_POLICY_SKIP_LIB_CMAKE_MERGE_CHECK enabled)
file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/lib/cmake")
foreach(cosa docs examples nuget README.md CHANGELOG.md)
    file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/${cosa}" "${CURRENT_PACKAGES_DIR}/debug/${cosa}")
endforeach()
file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/NOTICE.txt" "${CURRENT_PACKAGES_DIR}/debug/share")
# No licence has been granted yet; what is linked in statically is told.
file(INSTALL "${SOURCE_PATH}/packaging/NOTICE.txt" DESTINATION "${CURRENT_PACKAGES_DIR}/share/${PORT}" RENAME copyright)
file(REMOVE "${CURRENT_PACKAGES_DIR}/NOTICE.txt")
vcpkg_copy_pdbs()
# The headers of the debug build are those of the other one.
if(VCPKG_TARGET_IS_MINGW)
    vcpkg_fixup_pkgconfig()
endif()
