# What a user of the library gets: `cmake --install`, and the archive that CPack makes of it (tools/package).
# Everything found from the place where it was unpacked: no file of the package holds a path of a machine.
include(CMakePackageConfigHelpers)
include(exportaciones)

set(cmake_dir lib/cmake/lumodir)
set(generados ${CMAKE_CURRENT_BINARY_DIR}/paquete)

lumodir_escribe_def(${generados}/lumodir.def)
# For Visual Studio's linker, which makes its own where it has linked the DLL. Without LLVM's tool there is none, and its
# users make it of the .def.
if(NOT MSVC)
  find_program(LUMODIR_DLLTOOL NAMES llvm-dlltool)
  if(LUMODIR_DLLTOOL)
    add_custom_command(OUTPUT ${generados}/lumodir.lib
      COMMAND ${LUMODIR_DLLTOOL} -m i386:x86-64 -d lumodir.def -l lumodir.lib
      DEPENDS ${generados}/lumodir.def WORKING_DIRECTORY ${generados} VERBATIM)
    add_custom_target(lumodir_lib ALL DEPENDS ${generados}/lumodir.lib)
    install(FILES ${generados}/lumodir.lib DESTINATION lib)
  else()
    message(STATUS "no llvm-dlltool: lib/lumodir.lib is not made")
  endif()
endif()
configure_file(packaging/lumodir.pc.in ${generados}/lumodir.pc @ONLY NEWLINE_STYLE UNIX)
write_basic_package_version_file(${generados}/lumodirConfigVersion.cmake COMPATIBILITY SameMajorVersion)

install(TARGETS lumodir lumodir_cli RUNTIME DESTINATION bin ARCHIVE DESTINATION lib)
install(FILES ${generados}/lumodir.def DESTINATION lib)
install(DIRECTORY include/ DESTINATION include/lumodir FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp")
install(FILES packaging/lumodir.natvis DESTINATION lib)
install(FILES packaging/lumodirConfig.cmake ${generados}/lumodirConfigVersion.cmake DESTINATION ${cmake_dir})
install(FILES ${generados}/lumodir.pc DESTINATION lib/pkgconfig)
install(FILES packaging/README.md DESTINATION .)
install(DIRECTORY docs/ DESTINATION docs FILES_MATCHING PATTERN "*.md" PATTERN doxygen EXCLUDE)
# Completion and manual page of the command.
install(DIRECTORY share DESTINATION .)
# Those of the top folder lie among the others here, and so do their links.
foreach(pagina README.md CHANGELOG.md CONTRIBUTING.md)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${pagina})
  file(READ ${pagina} texto)
  string(REPLACE "](docs/" "](" texto "${texto}")
  string(REPLACE "](packaging/README.md)" "](../README.md)" texto "${texto}")
  string(REGEX REPLACE "\\]\\((examples|share)" "](../\\1" texto "${texto}")
  file(CONFIGURE OUTPUT ${generados}/${pagina} CONTENT "${texto}" @ONLY NEWLINE_STYLE LF)
  install(FILES ${generados}/${pagina} DESTINATION docs)
endforeach()
install(DIRECTORY examples DESTINATION .)
# Made by tools/docs, when it has been run.
install(DIRECTORY build/docs/html DESTINATION docs OPTIONAL)

set(CPACK_GENERATOR External)
set(CPACK_PACKAGE_FILE_NAME lumodir-${PROJECT_VERSION}-windows-x64)
set(CPACK_PACKAGE_VENDOR lumodir)
set(CPACK_STRIP_FILES ON)
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_EXTERNAL_PACKAGE_SCRIPT ${PROJECT_SOURCE_DIR}/packaging/empaqueta.cmake)
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
