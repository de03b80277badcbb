# Adds up what ctest and the programs have left of one preset in `carpeta`, and writes the figures to `cifras`. A test
# with a colon in its name is one case; any other is a program that tells its cases in a file of its own.
#     awk -v carpeta=FOLDER -v cifras=FILE -f tools/suma.awk FOLDER/ctest.junit
function valor(texto, nombre) {
    if (!match(texto, " " nombre "=\"[^\"]*\"")) return ""
    return substr(texto, RSTART + length(nombre) + 3, RLENGTH - length(nombre) - 4)
}
function falla(que) { print "FAILED: " que; mal += 1 }
function salta(que) { gsub(/&#x0A;/, " ", que); print "skipped: " que; saltados += 1 }
function programa(nombre, bien_acabado,    fichero, linea, casos, fallos, saltados_aqui, caso) {
    fichero = carpeta "/" nombre ".xml"
    while ((getline linea <fichero) > 0) {
        if (linea ~ /<testsuites /) {
            casos = valor(linea, "tests") - valor(linea, "disabled")
            fallos = valor(linea, "failures") + valor(linea, "errors")
        }
        if (linea ~ /<testcase /) caso = valor(linea, "classname") "." valor(linea, "name")
        if (linea ~ /<skipped /) { salta(caso ": " valor(linea, "message")); saltados_aqui += 1 }
    }
    bien += casos - fallos - saltados_aqui
    mal += fallos
    if (casos == 0) falla(nombre " ended without telling its results")
    else if (!bien_acabado && fallos == 0) falla(nombre " did not end well (its cases passed)")
}
function juzga() {
    if (nombre == "") return
    if (nombre !~ /:/) programa(nombre, estado == "run")
    else if (estado == "run") bien += 1
    else if (saltado) salta(nombre dicho)
    else falla(nombre)
    nombre = ""
}
/<testcase / {
    juzga()
    nombre = valor($0, "name"); estado = valor($0, "status"); saltado = 0; dicho = ""; pruebas += 1
}
/<skipped message="SKIP_RETURN_CODE/ { saltado = 1 }
/<system-out>/ { dicho = $0; sub(/.*<system-out>/, ": ", dicho) }
END { juzga(); if (pruebas == 0) falla("no tests were run"); print bien + 0, mal + 0, saltados + 0 >cifras }
