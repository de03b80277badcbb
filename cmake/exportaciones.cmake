# What the headers of include/ declare, for the tests of the finished DLL: a list of the exports and one source per
# header and language that holds nothing but its #include. Read again whenever a header changes.

# Writes <carpeta>/exportaciones.inc (EXPORTACION(name) for each function) and <carpeta>/cabeceras.inc (an #include
# for each header), and stores in <fuentes> the one-line sources.
function(lumodir_lee_cabeceras carpeta fuentes)
  file(GLOB_RECURSE cabeceras CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/include
       ${PROJECT_SOURCE_DIR}/include/*.h)
  set(exportaciones "")
  set(inclusiones "")
  set(generadas)
  foreach(cabecera IN LISTS cabeceras)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/${cabecera})
    string(APPEND inclusiones "#include \"${cabecera}\"\n")
    string(MAKE_C_IDENTIFIER ${cabecera} raiz)
    foreach(lenguaje c cpp)
      file(CONFIGURE OUTPUT ${carpeta}/${raiz}.${lenguaje} CONTENT "#include \"${cabecera}\"\n")
      list(APPEND generadas ${carpeta}/${raiz}.${lenguaje})
    endforeach()
    file(READ ${PROJECT_SOURCE_DIR}/include/${cabecera} texto)
    # A declaration: the mark at the start of a line, the type, the name, the bracket.
    string(REGEX MATCHALL "\nLUMODIR_API[^;()]*\\(" declaraciones "${texto}")
    foreach(declaracion IN LISTS declaraciones)
      string(REGEX REPLACE ".*[ \n*]([A-Za-z0-9_]+)\\($" "\\1" nombre "${declaracion}")
      string(APPEND exportaciones "EXPORTACION(${nombre})\n")
    endforeach()
  endforeach()
  file(CONFIGURE OUTPUT ${carpeta}/exportaciones.inc CONTENT "${exportaciones}" @ONLY)
  file(CONFIGURE OUTPUT ${carpeta}/cabeceras.inc CONTENT "${inclusiones}" @ONLY)
  set(${fuentes} ${generadas} PARENT_SCOPE)
endfunction()
