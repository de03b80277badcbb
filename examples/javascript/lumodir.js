// lumodir for Node.js, through koffi: the wide flavour, for a JavaScript string is UTF-16 as Windows' own texts are.
//
// Whoever calls C functions declares them by hand: a parameter too few is no error but a crash. These are taken from the
// headers, in their order.
//   - A returned string is the caller's: `Cadena` copies it into a JavaScript string and frees it with the library.
//   - A string through a parameter: `_Out_ void **`, then `toma()` copies and frees it.
//   - Records are packed to single bytes (koffi.pack).
//   - Records in a list are freed by the library with the destroyer of their kind, given by its address in the DLL.
//   - A callback that outlives the call that got it must be registered, and unregistered when the library has let it go.
//   - One thread: koffi's asynchronous calls would run callbacks elsewhere.
'use strict';
const path = require('path');
const koffi = require('koffi');

const dll = process.env.LUMODIR_DLL || path.join(__dirname, 'lumodir.dll');
const lib = koffi.load(dll);

// unsigned long has 32 bits on Windows, and truth values travel as unsigned short: 1 is true, anything else false.
const destruye = lib.func('void widestr_nousar_destruye(_Inout_ void **text, const char *tag, uint32 line)');
const Cadena = koffi.disposable('Cadena', 'str16', (puntero) => destruye([puntero], 'lumodir.js', 0));

const ListaFicheros = koffi.pack('ListaFicheros_u', { path: 'void *', num: 'uint32', lista: 'void *' });
const Fichsdir = koffi.pack('Fichsdir', { nombre: 'str', fecha: 'int64', protegido: 'uint16', ruta: 'str16' });
const UnidadSistema = koffi.pack('UnidadSistema', { nombre: 'str16', tipo: 'uint32' });
const FILETIME = koffi.struct('FILETIME', { dwLowDateTime: 'uint32', dwHighDateTime: 'uint32' });
koffi.struct('WIN32_FIND_DATAW', {
    dwFileAttributes: 'uint32', ftCreationTime: FILETIME, ftLastAccessTime: FILETIME, ftLastWriteTime: FILETIME,
    nFileSizeHigh: 'uint32', nFileSizeLow: 'uint32', dwReserved0: 'uint32', dwReserved1: 'uint32',
    cFileName: koffi.array('char16', 260, 'String'), cAlternateFileName: koffi.array('char16', 14, 'String')
});

const ErrorInternoReceptor = koffi.proto(
    'void ErrorInternoReceptor(const char *expression, const char *tag, uint32 line, str16 detail, void *context)');
const LmavisoReceptor = koffi.proto('void LmavisoReceptor(str16 text, void *context)');
const BuclreinReceptor = koffi.proto('uint16 BuclreinReceptor(str16 message, uint32 error_code, void *context)');
const Compara = koffi.proto('int Compara(str16 text1, str16 text2)');

const c = {};
for (const prototipo of [
    // Paths
    'uint16 cdir_es_path_valido_UNICODE(str16 path, _Out_ void **mensaje)',
    'uint16 cdir_path_valido_UNICODE(str16 path, uint16 mostrar_mensaje)',
    'void cdir_splitpath_con_comprobacion_UNICODE(str16 path, _Out_ void **unidad, _Out_ void **directorio, _Out_ void **nombre, _Out_ void **extension)',
    'Cadena cdir_makepath_UNICODE(str16 unidad, str16 directorio, str16 nombre_base, str16 extension)',
    'Cadena cdir_dame_nombre_base_valido_UNICODE(str16 nombre)',
    'uint16 cdir_extension_valida_UNICODE(str16 ext)',
    'Cadena cdir_nombre_base_fichero_UNICODE(str16 ruta)',
    'Cadena cdir_extension_fichero_UNICODE(str16 ruta)',
    'Cadena cdir_nombre_y_ext_fichero_UNICODE(str16 ruta)',
    'Cadena cdir_ruta_acceso_directorio_fichero_UNICODE(str16 ruta)',
    'Cadena cdir_ruta_y_nombre_fichero_sin_extension_UNICODE(str16 ruta)',
    'Cadena cdir_nombre_fichero_con_ext_UNICODE(str16 nombre, str16 ext)',
    'Cadena cdir_concatena_directorios_UNICODE(str16 directorio1, str16 directorio2)',
    'Cadena cdir_construye_path_UNICODE(str16 directorio1, str16 directorio2, str16 nombre)',
    'Cadena cdir_ruta_abreviada_con_logitud_maxima_u(str16 ruta, uint16 maximo)',
    'uint16 lumodir_ruta_es_absoluta(str16 ruta)',
    'Cadena lumodir_ruta_absoluta_a_relativa(str16 base, str16 ruta)',
    'Cadena lumodir_ruta_relativa_a_absoluta(str16 base, str16 ruta)',
    // Files and directories
    'uint16 cdir_existe_fichero_UNICODE(str16 nombre)',
    'uint16 cdir_existe_directorio_UNICODE(str16 nombre)',
    'uint16 cdir_es_directorio_u(str16 path)',
    'uint16 cdir_se_puede_leer_UNICODE(str16 fichero)',
    'uint16 cdir_se_puede_escribir_UNICODE(str16 fichero)',
    'uint16 cdir_borra_fichero_UNICODE(str16 fichero)',
    'uint16 cdir_borra_fichero_si_existe_UNICODE(str16 fichero)',
    'uint16 cdir_borra_directorio_UNICODE(str16 directorio)',
    'uint16 cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE(str16 directorio, void *fallos)',
    'uint16 cdir_crea_directorios_UNICODE(str16 path, uint16 es_directorio)',
    'uint16 cdir_renombra_fichero_si_es_posible_UNICODE(str16 viejo, str16 nuevo)',
    'void cdir_cambia_extension_ficheros_u(str16 dirBase, str16 oldExt, str16 newExt)',
    'void lumodir_protege_fichero_UNICODE(str16 fichero)',
    'void lumodir_desprotege_fichero_UNICODE(str16 fichero)',
    'uint64 lumodir_get_tamanyo_fichero(str16 path, _Out_ uint32 *error_out)',
    'Cadena lumodir_dameDirectorioTemporal()',
    'Cadena lumodir_creaFicheroUnicoEnDirectorio(str16 directorio, str16 ext)',
    'uint16 timefich_asignar_fecha_fichero_UTC(str16 fichero, int64 fecha)',
    'int64 timefich_obtener_fecha_fichero_UTC(str16 fichero)',
    'int64 timefich_convierte_timet_UTC_a_timet_local(int64 fecha)',
    // Listings
    'void cdir_lista_de_ficheros_UNICODE(str16 directorio, str16 extension, _Out_ ListaFicheros_u *lista)',
    'void cdir_libera_lista_de_ficheros_UNICODE(_Inout_ ListaFicheros_u *lista)',
    'void lumodir_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(str16 dirBase, str16 extension, _Out_ uint32 *numDir, _Out_ void **ficheros)',
    'void lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(uint32 numDir, _Inout_ void **ficheros)',
    'void *fichsdir_ficheros_u(str16 directorio)',
    'void *fichsdir_directorios_u(str16 directorio)',
    'void *dirwin_crea_UNICODE(str16 patron)',
    'uint16 dirwin_findnextfile_UNICODE(void *dirwin, _Out_ WIN32_FIND_DATAW *entrada)',
    'void dirwin_destruye_UNICODE(_Inout_ void **dirwin)',
    // Registry, drives, Wine
    'uint16 lumoreg_crea_clave_u(uint32 raiz, str16 clave)',
    'uint16 lumoreg_existe_clave_u(uint32 raiz, str16 clave)',
    'uint16 lumoreg_establece_cadena_u(uint32 raiz, str16 clave, str16 nombre, str16 dato)',
    'uint16 lumoreg_lee_cadena_u(uint32 raiz, str16 clave, str16 nombre, _Out_ void **contenido)',
    'uint16 lumoreg_dame_subclaves_u(uint32 raiz, str16 clave, void *subclaves)',
    'void lumoreg_borra_clave_u(uint32 raiz, str16 clave, str16 nombre)',
    'void *lumodir_UnidadesDelSistema()',
    'uint16 wine_estamos_en_wine()',
    // Lists
    'void *arr_CreaCADENA_u(uint32 initial)',
    'void arr_AppendCADENA_u(void *list, str16 text)',
    'uint32 arr_NumElemsCADENA_u(void *list)',
    'str16 arr_GetCADENA_u(void *list, uint32 index)',
    'void arr_QSortCADENA_u(void *list, Compara *compare)',
    'void arr_DestruyeCADENA_u(_Inout_ void **list)',
    'uint32 arr_NumElemsPuntero(void *list)',
    'void *arr_GetPunteroConTipo(void *list, uint32 index)',
    'void arr_DestruyeEstructurasConTipo(_Inout_ void **list, void *destroy)',
    // The host
    'void error_interno_establece_receptor(ErrorInternoReceptor *receive, void *context)',
    'void lmaviso_establece_receptor(LmavisoReceptor *show, void *context)',
    'void buclrein_establece_receptor(BuclreinReceptor *ask, void *context)',
    'void buclrein_establece_politica(uint32 silent_retries, uint32 wait_ms)',
    'void msglocal_establece_idioma(uint32 slot)',
    'uint32 msglocal_dame_idioma()',
    'uint64 lumospy_bloques_vivos()'
]) {
    c[prototipo.match(/(\w+)\(/)[1]] = lib.func(prototipo);
}

// The address of an exported function, for the library to call.
const kernel32 = koffi.load('kernel32.dll');
const GetModuleHandleW = kernel32.func('void *GetModuleHandleW(str16 name)');
const GetProcAddress = kernel32.func('void *GetProcAddress(void *module, const char *name)');
function direccion(nombre) {
    return GetProcAddress(GetModuleHandleW(path.basename(dll)), nombre);
}

// A string that the library has put into a variable: a copy, and it is freed. `salida` is the array that koffi fills.
function toma(salida) {
    if (salida[0] === null) return null;
    const texto = koffi.decode(salida[0], 'char16', -1);
    destruye(salida, 'lumodir.js', 0);
    return texto;
}

// A list of strings as an array; it is freed.
function tomaTextos(lista) {
    const textos = [];
    for (let i = 0; i < c.arr_NumElemsCADENA_u(lista); ++i) textos.push(c.arr_GetCADENA_u(lista, i));
    c.arr_DestruyeCADENA_u([lista]);
    return textos;
}

// A list of records as an array of objects; it is freed, each record with the destroyer of its kind.
function tomaRegistros(lista, tipo, destructor) {
    const registros = [];
    for (let i = 0; i < c.arr_NumElemsPuntero(lista); ++i) {
        registros.push(koffi.decode(c.arr_GetPunteroConTipo(lista, i), tipo));
    }
    c.arr_DestruyeEstructurasConTipo([lista], direccion(destructor));
    return registros;
}

module.exports = {
    c,
    CIERTO: 1,
    HKCU: 2, // LUMOREG_RAIZ_CURRENT_USER
    INGLES: 8, // MSGLOCAL_INGLES

    esPathValido(ruta) {
        const mensaje = [null];
        const valido = c.cdir_es_path_valido_UNICODE(ruta, mensaje) === 1;
        return valido ? { valido } : { valido, mensaje: toma(mensaje) };
    },
    corta(ruta) {
        const [unidad, directorio, nombre, extension] = [[null], [null], [null], [null]];
        c.cdir_splitpath_con_comprobacion_UNICODE(ruta, unidad, directorio, nombre, extension);
        return { unidad: toma(unidad), directorio: toma(directorio), nombre: toma(nombre), extension: toma(extension) };
    },
    ficheros(directorio, extension) {
        const lista = {};
        c.cdir_lista_de_ficheros_UNICODE(directorio, extension, lista);
        const nombres = lista.num === 0 ? [] : koffi.decode(lista.lista, koffi.array('str16', lista.num));
        c.cdir_libera_lista_de_ficheros_UNICODE(lista);
        return nombres;
    },
    arbol(directorio, extension) {
        const [cuantos, listas] = [[0], [null]];
        c.lumodir_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(directorio, extension, cuantos, listas);
        const todo = [];
        if (cuantos[0] > 0) {
            for (const lista of koffi.decode(listas[0], koffi.array(ListaFicheros, cuantos[0]))) {
                const en = koffi.decode(lista.path, 'char16', -1);
                const nombres = lista.num === 0 ? [] : koffi.decode(lista.lista, koffi.array('str16', lista.num));
                for (const nombre of nombres) todo.push(en + '\\' + nombre);
            }
        }
        c.lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(cuantos[0], listas);
        return todo;
    },
    conFechas(directorio) {
        return tomaRegistros(c.fichsdir_ficheros_u(directorio), Fichsdir, 'fichsdir_destruye');
    },
    directorios(directorio) {
        return tomaTextos(c.fichsdir_directorios_u(directorio));
    },
    unidades() {
        return tomaRegistros(c.lumodir_UnidadesDelSistema(), UnidadSistema, 'lumodir_destruyeEstructuraUnidadSistema');
    },
    // Every entry that a pattern finds, "." and ".." included.
    *entradas(patron) {
        const dirwin = c.dirwin_crea_UNICODE(patron);
        try {
            for (const entrada = {}; c.dirwin_findnextfile_UNICODE(dirwin, entrada) === 1;) yield { ...entrada };
        } finally {
            c.dirwin_destruye_UNICODE([dirwin]);
        }
    },
    ordena(textos, compara) {
        const lista = c.arr_CreaCADENA_u(textos.length);
        for (const texto of textos) c.arr_AppendCADENA_u(lista, texto);
        c.arr_QSortCADENA_u(lista, compara);
        return tomaTextos(lista);
    },
    leeRegistro(raiz, clave, nombre) {
        const contenido = [null];
        return c.lumoreg_lee_cadena_u(raiz, clave, nombre, contenido) === 1 ? toma(contenido) : undefined;
    },
    subclaves(raiz, clave) {
        const lista = c.arr_CreaCADENA_u(0);
        c.lumoreg_dame_subclaves_u(raiz, clave, lista);
        return tomaTextos(lista);
    },
    borraArbol(directorio) {
        const fallos = c.arr_CreaCADENA_u(0);
        const borrado = c.cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE(directorio, fallos) === 1;
        return { borrado, fallos: tomaTextos(fallos) };
    },
    tamanyo(fichero) {
        const error = [0];
        const bytes = c.lumodir_get_tamanyo_fichero(fichero, error);
        return BigInt(bytes) === 0xFFFFFFFFFFFFFFFFn ? { error: error[0] } : { bytes: Number(bytes) };
    },
    // The host's services, until the function that is returned is called.
    servicios({ informe, aviso, pregunta }) {
        const dados = [
            koffi.register((expresion, tag, linea, detalle) => informe(expresion, detalle), koffi.pointer(ErrorInternoReceptor)),
            koffi.register((texto) => aviso(texto), koffi.pointer(LmavisoReceptor)),
            koffi.register((mensaje, codigo) => (pregunta(mensaje, codigo) ? 1 : 0), koffi.pointer(BuclreinReceptor))
        ];
        c.error_interno_establece_receptor(dados[0], null);
        c.lmaviso_establece_receptor(dados[1], null);
        c.buclrein_establece_receptor(dados[2], null);
        return () => {
            c.error_interno_establece_receptor(null, null);
            c.lmaviso_establece_receptor(null, null);
            c.buclrein_establece_receptor(null, null);
            dados.forEach((dado) => koffi.unregister(dado));
        };
    }
};
