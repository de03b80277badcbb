# What the headers of include/ declare: the module definition that other tool chains make their import library from,
# and, for the tests of the finished DLL, a list of the exports and one source per header and language that holds
# nothing but its #include. Read again whenever a header changes; tests/dll/exportaciones_test.cpp compares all of it
# with the DLL.

# Stores in <cabeceras> the headers, relative to include/, and in <nombres> the functions that they declare, sorted.
function(lumodir_lee_exportaciones cabeceras nombres)
  file(GLOB_RECURSE leidas CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/include
       ${PROJECT_SOURCE_DIR}/include/*.h)
  set(encontrados)
  foreach(cabecera IN LISTS leidas)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/${cabecera})
    file(READ ${PROJECT_SOURCE_DIR}/include/${cabecera} texto)
    # A declaration: the mark at the start of a line, the type, the name, the bracket.
    string(REGEX MATCHALL "\nLUMODIR_API[^;()]*\\(" declaraciones "${texto}")
    foreach(declaracion IN LISTS declaraciones)
      string(REGEX REPLACE ".*[ \n*]([A-Za-z0-9_]+)\\($" "\\1" nombre "${declaracion}")
      list(APPEND encontrados ${nombre})
    endforeach()
  endforeach()
  list(SORT encontrados)
  set(${cabeceras} ${leidas} PARENT_SCOPE)
  set(${nombres} ${encontrados} PARENT_SCOPE)
endfunction()

# Writes the module definition of the DLL.
function(lumodir_escribe_def fichero)
  lumodir_lee_exportaciones(cabeceras nombres)
  list(JOIN nombres "\n    " lineas)
  file(CONFIGURE OUTPUT ${fichero} CONTENT "LIBRARY lumodir.dll\nEXPORTS\n    ${lineas}\n" @ONLY NEWLINE_STYLE LF)
endfunction()

# Writes <carpeta>/exportaciones.inc (EXPORTACION(name) for each function) and <carpeta>/cabeceras.inc (an #include
# for each header), and stores in <fuentes> the one-line sources.
function(lumodir_lee_cabeceras carpeta fuentes)
  lumodir_lee_exportaciones(cabeceras nombres)
  set(inclusiones "")
  set(generadas)
  foreach(cabecera IN LISTS cabeceras)
    string(APPEND inclusiones "#include \"${cabecera}\"\n")
    string(MAKE_C_IDENTIFIER ${cabecera} raiz)
    foreach(lenguaje c cpp)
      file(CONFIGURE OUTPUT ${carpeta}/${raiz}.${lenguaje} CONTENT "#include \"${cabecera}\"\n")
      list(APPEND generadas ${carpeta}/${raiz}.${lenguaje})
    endforeach()
  endforeach()
  # The headers for C++ alone.
  file(GLOB_RECURSE de_cpp CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/include
       ${PROJECT_SOURCE_DIR}/include/*.hpp)
  foreach(cabecera IN LISTS de_cpp)
    string(MAKE_C_IDENTIFIER ${cabecera} raiz)
    file(CONFIGURE OUTPUT ${carpeta}/${raiz}.cpp CONTENT "#include \"${cabecera}\"\n")
    list(APPEND generadas ${carpeta}/${raiz}.cpp)
  endforeach()
  list(TRANSFORM nombres REPLACE "(.+)" "EXPORTACION(\\1)\n")
  list(JOIN nombres "" exportaciones)
  file(CONFIGURE OUTPUT ${carpeta}/exportaciones.inc CONTENT "${exportaciones}" @ONLY)
  file(CONFIGURE OUTPUT ${carpeta}/cabeceras.inc CONTENT "${inclusiones}" @ONLY)
  set(${fuentes} ${generadas} PARENT_SCOPE)
endfunction()
