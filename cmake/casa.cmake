# What tools/test looks at beside the programs of tests/: somebody who attacks, the examples, the pages, Visual Studio's
# side, the fuzz targets, the form of the code and usual mistakes in it. Tests of CTest's like the others, each kind with
# a label (ctest -L tidy). A colon in the name: one case, which tells no others of its own. What this machine cannot
# judge ends with 3.

function(lumodir_prueba_de_casa etiqueta nombre)
  add_test(NAME ${etiqueta}:${nombre} COMMAND ${ARGN} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  set_tests_properties(${etiqueta}:${nombre} PROPERTIES LABELS ${etiqueta} TIMEOUT 600 SKIP_RETURN_CODE 3)
endfunction()

if(LUMODIR_SOLO_TEXTO)
  lumodir_prueba_de_casa(form code tools/formatea --comprueba)
  foreach(carpeta IN LISTS LUMODIR_CAPAS)
    lumodir_prueba_de_casa(tidy src/${carpeta} tools/tidy src/${carpeta})
  endforeach()
  foreach(que apps/lumodir include/lumodir.hpp)
    lumodir_prueba_de_casa(tidy ${que} tools/tidy ${que})
  endforeach()
  foreach(objetivo IN LISTS LUMODIR_OBJETIVOS_FUZZ)
    lumodir_prueba_de_casa(fuzz ${objetivo} tools/fuzz --ci ${objetivo})
  endforeach()
else()
  # Somebody who swaps directories for links while the library deletes and lists them. It needs a Unix side beside the
  # Windows one.
  foreach(papel victima intruso)
    add_executable(ataque_${papel} ataque/${papel}.cpp)
    target_include_directories(ataque_${papel} PRIVATE ${PROJECT_SOURCE_DIR}/include)
    target_link_libraries(ataque_${papel} PRIVATE lumodir_opciones)
  endforeach()
  add_test(NAME ataque COMMAND tools/attack --ci ${PROJECT_BINARY_DIR}/resultados/ataque.xml
           WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  set_tests_properties(ataque PROPERTIES LABELS attack TIMEOUT 600)
  lumodir_prueba_de_casa(examples package tools/examples)
  lumodir_prueba_de_casa(examples msvc tools/msvc)
  cmake_path(GET PROJECT_BINARY_DIR FILENAME perfil)
  lumodir_prueba_de_casa(documentation pages tools/docs ${perfil} --ci)
  set_tests_properties(examples:package documentation:pages PROPERTIES RESOURCE_LOCK lumodir_dll)
endif()
