# The folders of src/ are layers: each one calls only those before it in this list. A file that includes from a
# folder above its own stops the configuration.
set(LUMODIR_CAPAS companions frame paths system listings files abi)

# The exports all stand in abi: no file of the others can call one, because to the compiler they are not available.

function(lumodir_comprueba_capas carpeta)
  list(FIND LUMODIR_CAPAS ${carpeta} nivel)
  set(superiores ${LUMODIR_CAPAS})
  foreach(inferior RANGE ${nivel})
    list(POP_FRONT superiores)
  endforeach()
  foreach(fichero IN LISTS ARGN)
    file(STRINGS ${fichero} inclusiones REGEX "^#include \"")
    foreach(superior IN LISTS superiores)
      if(inclusiones MATCHES "#include \"${superior}/")
        message(FATAL_ERROR "${fichero} includes from src/${superior}, a layer above src/${carpeta}")
      endif()
    endforeach()
  endforeach()
endfunction()

# One object library per layer.
function(lumodir_capa carpeta)
  file(GLOB cabeceras CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${carpeta}/*.hpp)
  set(fuentes ${ARGN})
  list(TRANSFORM fuentes PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/${carpeta}/)
  lumodir_comprueba_capas(${carpeta} ${fuentes} ${cabeceras})
  add_library(lumodir_${carpeta} OBJECT ${fuentes})
  target_include_directories(lumodir_${carpeta} PUBLIC ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/src)
  target_compile_definitions(lumodir_${carpeta} PRIVATE LUMODIR_CONSTRUYE)
  if(NOT carpeta STREQUAL "abi" AND NOT MSVC)
    target_compile_definitions(lumodir_${carpeta} PRIVATE "LUMODIR_API=__attribute__((unavailable))")
  endif()
  target_link_libraries(lumodir_${carpeta} PRIVATE lumodir_opciones)
  target_compile_options(lumodir_${carpeta} PRIVATE ${LUMODIR_OPCIONES_NORMA})
  set_target_properties(lumodir_${carpeta} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  if(LUMODIR_FUZZ)
    # What the fuzzer learns its way from; elsewhere it does nothing.
    target_compile_options(lumodir_${carpeta} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endfunction()
