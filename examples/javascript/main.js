// The library from JavaScript: strings, lists, records and callbacks, and the library's own count of blocks to show that
// nothing is left over.
//     node main.js            once, and tells what it does
//     node main.js ROUNDS     so many times, silently; ends with 1 when anything differs from the first time
'use strict';
const fs = require('fs');
const path = require('path');
const lumodir = require('./lumodir.js');
const { c, CIERTO } = lumodir;

const usadas = new Set();
for (const nombre of Object.keys(c)) {
    const funcion = c[nombre];
    c[nombre] = (...argumentos) => (usadas.add(nombre), funcion(...argumentos));
}

let di = console.log;
const si = (respuesta) => (respuesta === CIERTO ? 'yes' : 'no');
const sin = (base, texto) => texto.split(base).join('$D');

function rutas() {
    di('Paths');
    di('   ', lumodir.esPathValido('C:\\data\\año 2024\\報告.txt'));
    di('   ', lumodir.esPathValido('C:\\data\\con.txt'));
    di('   ', lumodir.corta('\\\\srv\\share\\a\\b.tar.gz'));
    di('   ', c.cdir_makepath_UNICODE('C:', '\\data', 'may', 'txt'), c.cdir_dame_nombre_base_valido_UNICODE('May/June?'),
        si(c.cdir_extension_valida_UNICODE('txt')));
    const ruta = 'C:\\data\\reports\\may.txt';
    di('   ', c.cdir_nombre_base_fichero_UNICODE(ruta), c.cdir_extension_fichero_UNICODE(ruta),
        c.cdir_nombre_y_ext_fichero_UNICODE(ruta), c.cdir_ruta_acceso_directorio_fichero_UNICODE(ruta),
        c.cdir_ruta_y_nombre_fichero_sin_extension_UNICODE(ruta), c.cdir_nombre_fichero_con_ext_UNICODE('june', 'txt'));
    di('   ', c.cdir_concatena_directorios_UNICODE('C:\\data', 'reports'), c.cdir_construye_path_UNICODE('C:\\data', 'x', 'y.z'),
        c.cdir_ruta_abreviada_con_logitud_maxima_u('C:\\Files\\Customers\\Images\\photo1.png', 24));
    di('   ', si(c.lumodir_ruta_es_absoluta(ruta)), c.lumodir_ruta_absoluta_a_relativa('C:\\data', ruta),
        c.lumodir_ruta_relativa_a_absoluta('C:\\data', 'x\\..\\y.txt'));
}

function ficheros(d) {
    di('Files');
    di('   ', 'created:', si(c.cdir_crea_directorios_UNICODE(d + '\\a\\b', CIERTO)), si(c.cdir_existe_directorio_UNICODE(d + '\\a')),
        si(c.cdir_es_directorio_u(d)));
    fs.writeFileSync(d + '\\a\\uno.txt', 'uno');
    fs.writeFileSync(d + '\\a\\dos 🎉.txt', 'dos');
    fs.writeFileSync(d + '\\a\\b\\tres.txt', 'tres');
    const uno = d + '\\a\\uno.txt';
    di('   ', si(c.cdir_existe_fichero_UNICODE(uno)), si(c.cdir_se_puede_leer_UNICODE(uno)), lumodir.tamanyo(uno),
        lumodir.tamanyo(d + '\\not there'));
    c.lumodir_protege_fichero_UNICODE(uno);
    di('   ', 'protected, so it can be written:', si(c.cdir_se_puede_escribir_UNICODE(uno)));
    c.lumodir_desprotege_fichero_UNICODE(uno);
    di('   ', 'dated:', si(c.timefich_asignar_fecha_fichero_UTC(uno, 1717180200)), Number(c.timefich_obtener_fecha_fichero_UTC(uno)));
    const local = Number(c.timefich_convierte_timet_UTC_a_timet_local(1717180200));
    di('   ', 'whole hours and halves from UTC:', (local - 1717180200) % 1800 === 0);
    di('   ', 'files:', lumodir.ficheros(d + '\\a', 'txt').sort());
    di('   ', 'tree:', lumodir.arbol(d, 'txt').map((f) => sin(d, f)).sort());
    di('   ', 'directories:', lumodir.directorios(d + '\\a').map((f) => sin(d, f)));
    di('   ', 'records:', lumodir.conFechas(d + '\\a').map((f) => [f.nombre, f.protegido, sin(d, f.ruta)]).sort().slice(-1));
    di('   ', 'entries:', [...lumodir.entradas(d + '\\a\\*')].map((e) => e.cFileName + ' ' + e.nFileSizeLow).sort());
    di('   ', 'renamed:', si(c.cdir_renombra_fichero_si_es_posible_UNICODE(uno, d + '\\a\\one.txt')));
    c.cdir_cambia_extension_ficheros_u(d + '\\a', 'txt', 'bak');
    di('   ', lumodir.ficheros(d + '\\a', null).sort());
    const unico = c.lumodir_creaFicheroUnicoEnDirectorio(d, 'tmp');
    di('   ', 'unique:', path.win32.extname(unico), fs.existsSync(unico), si(c.cdir_borra_fichero_UNICODE(unico)),
        si(c.cdir_borra_fichero_si_existe_UNICODE(unico)), c.lumodir_dameDirectorioTemporal().length > 3);
}

function anfitrion(d) {
    di('The host');
    const dicho = [];
    const fin = lumodir.servicios({
        informe: (expresion) => dicho.push('internal error: ' + expresion),
        aviso: (texto) => dicho.push('warning: ' + texto),
        pregunta: (mensaje, codigo) => (dicho.push('try again after error ' + codigo + '? no'), false)
    });
    c.cdir_path_valido_UNICODE('9:\\data', CIERTO);
    c.cdir_nombre_base_fichero_UNICODE(null);
    c.buclrein_establece_politica(1, 10);
    // Node opens files shared; a file set to be the current directory's is held by Windows itself.
    process.chdir(d + '\\a\\b');
    dicho.push('deleted: ' + si(c.cdir_borra_directorio_UNICODE(d + '\\a\\b')));
    process.chdir(d);
    c.buclrein_establece_politica(5, 100);
    fin();
    dicho.forEach((linea) => di('   ', sin(d, linea)));
    di('   ', 'compared from JavaScript:', lumodir.ordena(['b', 'ñ', 'a', 'c'], (x, y) => (x < y ? 1 : x > y ? -1 : 0)));
}

function sistema() {
    di('The system');
    const clave = 'Software\\LumodirExampleJS';
    di('   ', si(c.lumoreg_crea_clave_u(lumodir.HKCU, clave + '\\uno')), si(c.lumoreg_existe_clave_u(lumodir.HKCU, clave)),
        si(c.lumoreg_establece_cadena_u(lumodir.HKCU, clave, 'Saludo', 'Grüße, 世界')), lumodir.leeRegistro(lumodir.HKCU, clave, 'Saludo'),
        lumodir.leeRegistro(lumodir.HKCU, clave, 'nobody'), lumodir.subclaves(lumodir.HKCU, clave));
    c.lumoreg_borra_clave_u(lumodir.HKCU, 'Software', 'LumodirExampleJS');
    di('   ', 'deleted:', c.lumoreg_existe_clave_u(lumodir.HKCU, clave) !== CIERTO);
    di('   ', 'drive C:', lumodir.unidades().some((u) => u.nombre === 'C:'), [0, 1].includes(c.wine_estamos_en_wine()));
}

function ronda() {
    const d = fs.mkdtempSync(c.lumodir_dameDirectorioTemporal().replace(/\\?$/, '\\lumodir_js_'));
    const antes = c.lumospy_bloques_vivos();
    c.msglocal_establece_idioma(lumodir.INGLES);
    rutas();
    ficheros(d);
    anfitrion(d);
    sistema();
    di('At the end');
    process.chdir(__dirname);
    di('   ', 'deleted:', lumodir.borraArbol(d), fs.existsSync(d));
    di('   ', 'language', c.msglocal_dame_idioma() + ', functions called:', usadas.size, 'of', Object.keys(c).length);
    di('   ', 'blocks never freed:', Number(BigInt(c.lumospy_bloques_vivos()) - BigInt(antes)));
}

const rondas = process.argv[2];
if (rondas === undefined) {
    ronda();
} else {
    const util = require('util');
    let primera;
    for (let i = 0; i < Number(rondas); ++i) {
        const lineas = [];
        di = (...que) => lineas.push(util.format(...que));
        ronda();
        const texto = lineas.join('\n').replace(/functions called: \d+/, '');
        primera = primera || texto;
        if (texto !== primera || !texto.endsWith('never freed: 0')) {
            console.log('round %d:\n%s\n--- the first:\n%s', i, texto, primera);
            process.exit(1);
        }
    }
    console.log('%d rounds of %d functions, each like the first; blocks never freed: 0', Number(rondas), usadas.size);
}
