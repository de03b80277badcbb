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
if(MINGW)  # it names the import library as that linker wants it
  configure_file(packaging/lumodir.pc.in ${generados}/lumodir.pc @ONLY NEWLINE_STYLE UNIX)
  install(FILES ${generados}/lumodir.pc DESTINATION lib/pkgconfig)
endif()
write_basic_package_version_file(${generados}/lumodirConfigVersion.cmake COMPATIBILITY SameMajorVersion)

if(LUMODIR_ORDEN)
  install(TARGETS lumodir_cli RUNTIME DESTINATION bin)
  # Its completion, its manual page, the schema of its answers.
  install(DIRECTORY share DESTINATION .)
endif()
install(TARGETS lumodir RUNTIME DESTINATION bin ARCHIVE DESTINATION lib)
install(FILES ${generados}/lumodir.def packaging/lumodir.natvis DESTINATION lib)
install(DIRECTORY include/ DESTINATION include/lumodir FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp")
install(FILES packaging/lumodirConfig.cmake ${generados}/lumodirConfigVersion.cmake DESTINATION ${cmake_dir})
install(DIRECTORY examples DESTINATION .)
install(FILES packaging/NOTICE.txt DESTINATION .)

# The pages that users need. What only those who build the library do stands between two marks, and stays at home.
foreach(pagina packaging/README.md CHANGELOG.md docs/guide.md docs/platforms.md docs/glossary.md docs/versions.md
               docs/languages.md docs/i_want_to.md)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${pagina})
  file(READ ${pagina} texto)
  # CMake takes these for parts of a list.
  string(REPLACE ";" "@punto_y_coma@" texto "${texto}")
  string(REPLACE "[" "@corchete@" texto "${texto}")
  string(REPLACE "]" "@corchete_final@" texto "${texto}")
  set(paquete)
  string(REPLACE "<!-- /at home -->" ";" trozos "${texto}")
  foreach(trozo IN LISTS trozos)
    string(FIND "${trozo}" "<!-- at home -->" donde)
    string(SUBSTRING "${trozo}" 0 ${donde} trozo)
    string(APPEND paquete "${trozo}")
  endforeach()
  string(REPLACE "@punto_y_coma@" ";" paquete "${paquete}")
  string(REPLACE "@corchete@" "[" paquete "${paquete}")
  string(REPLACE "@corchete_final@" "]" paquete "${paquete}")
  # Those of the top folder are at the top here too.
  get_filename_component(carpeta ${pagina} DIRECTORY)
  if(NOT carpeta STREQUAL docs)
    set(carpeta .)
  endif()
  get_filename_component(nombre ${pagina} NAME)
  file(CONFIGURE OUTPUT ${generados}/${carpeta}/${nombre} CONTENT "${paquete}" @ONLY NEWLINE_STYLE LF)
  install(FILES ${generados}/${carpeta}/${nombre} DESTINATION ${carpeta})
endforeach()
# Made by tools/docs, when it has been run.
install(DIRECTORY build/docs/html DESTINATION docs OPTIONAL)

# For the package managers, with the version filled in.
foreach(fichero nuget/lumodir.nuspec nuget/lumodir.targets)
  configure_file(packaging/${fichero}.in ${generados}/${fichero} @ONLY NEWLINE_STYLE UNIX)
  install(FILES ${generados}/${fichero} DESTINATION nuget)
endforeach()

# What is linked in statically, for the bill of materials: its versions, as the compilers tell them.
set(LUMODIR_GCC "NOASSERTION")
set(LUMODIR_MINGW "NOASSERTION")
if(MINGW)
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    set(LUMODIR_GCC "${CMAKE_CXX_COMPILER_VERSION}")
  else()
    execute_process(COMMAND x86_64-w64-mingw32-g++-posix -dumpfullversion OUTPUT_VARIABLE LUMODIR_GCC
                    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  endif()
  set(objetivo)
  if(CMAKE_C_COMPILER_TARGET)
    set(objetivo --target=${CMAKE_C_COMPILER_TARGET})
  endif()
  file(WRITE ${generados}/version_mingw.c "#include <_mingw.h>\nversion __MINGW64_VERSION_STR\n")
  execute_process(COMMAND ${CMAKE_C_COMPILER} ${objetivo} -E -P ${generados}/version_mingw.c OUTPUT_VARIABLE texto
                  COMMAND_ERROR_IS_FATAL ANY)
  # version "10" "." "0" "." "0"
  string(REGEX MATCH "version [^\n]*" texto "${texto}")
  string(REGEX REPLACE "[^0-9.]" "" LUMODIR_MINGW "${texto}")
endif()
set(LUMODIR_COMPILADOR "${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION}")
configure_file(packaging/sbom.spdx.json.in ${generados}/sbom.spdx.json.in @ONLY NEWLINE_STYLE UNIX)

# Another project that installs this one with itself has an archive of its own.
if(PROJECT_IS_TOP_LEVEL)
  set(CPACK_GENERATOR External)
  set(CPACK_PACKAGE_FILE_NAME lumodir-${PROJECT_VERSION}-windows-x64)
  set(CPACK_PACKAGE_VENDOR lumodir)
  set(CPACK_STRIP_FILES ON)
  set(CPACK_LUMODIR_SBOM ${generados}/sbom.spdx.json.in)
  set(CPACK_EXTERNAL_ENABLE_STAGING ON)
  set(CPACK_EXTERNAL_PACKAGE_SCRIPT ${PROJECT_SOURCE_DIR}/packaging/empaqueta.cmake)
  set(CPACK_VERBATIM_VARIABLES ON)
  include(CPack)
endif()
