/*
 * A program as Visual Studio makes it, compiled by Clang for its ABI and linked by LLD with lumodir.lib (tools/msvc):
 * strings, lists, records by their layout, callbacks and the census come through. Ends with 0, or with the line of the
 * first check that failed. No C runtime: there is none of Visual Studio's here.
 */
#include <windows.h>

#include "cdir.h"
#include "companions/acadorde.h"
#include "companions/apunorde.h"
#include "companions/arr.h"
#include "companions/buclrein.h"
#include "companions/error_interno.h"
#include "companions/lmaviso.h"
#include "companions/lmlongpath.h"
#include "companions/lumospy.h"
#include "companions/lumostr.h"
#include "companions/msglocal.h"
#include "companions/widestr.h"
#include "dirwin.h"
#include "discos.h"
#include "fichsdir.h"
#include "info.h"
#include "lumodir.h"
#include "lumoreg.h"
#include "nomsfich.h"
#include "taskproc.h"
#include "timefich.h"
#include "wine.h"

#define COMPRUEBA(condicion) ((condicion) ? (void)0 : ExitProcess(__LINE__))

static int igual(const wchar_t *a, const wchar_t *b) {
    while (*a != 0 && *a == *b) {
        ++a;
        ++b;
    }
    return *a == *b;
}

struct recibido {
    unsigned cuantos;
    unsigned long linea;
    wchar_t primera;
};

static void recibe(const char *expression, const char *tag, unsigned long line, const wchar_t *detail, void *context) {
    struct recibido *r = context;
    (void)tag;
    (void)detail;
    r->cuantos += 1;
    r->linea = line;
    r->primera = (wchar_t)expression[0];
}

static int al_reves(const wchar_t *a, const wchar_t *b) {
    return *a < *b ? 1 : *a > *b ? -1 : 0;
}

static void prueba_cadenas(void) {
    wchar_t *mensaje = 0;
    wchar_t *unidad = 0;
    wchar_t *nombre = 0;
    COMPRUEBA(cdir_es_path_valido_UNICODE(L"C:\\data\\may.txt", &mensaje) == CIERTO);
    COMPRUEBA(mensaje == 0);
    COMPRUEBA(cdir_es_path_valido_UNICODE(L"C:\\data\\con.txt", &mensaje) == FALSO);
    COMPRUEBA(mensaje != 0 && mensaje[0] != 0);
    widestr_nousar_destruye(&mensaje, "msvc", __LINE__);
    COMPRUEBA(mensaje == 0);
    cdir_splitpath_con_comprobacion_UNICODE(L"\\\\srv\\share\\a\\b.txt", &unidad, 0, &nombre, 0);
    COMPRUEBA(igual(unidad, L"\\\\srv\\share"));
    COMPRUEBA(igual(nombre, L"b"));
    widestr_nousar_destruye(&unidad, "msvc", __LINE__);
    widestr_nousar_destruye(&nombre, "msvc", __LINE__);
}

static void prueba_listas(void) {
    ArrCADENA_u *lista = arr_CreaCADENA_u(0);
    arr_AppendCADENA_u(lista, L"b");
    arr_AppendCADENA_u(lista, L"c");
    arr_AppendCADENA_u(lista, L"a");
    arr_QSortCADENA_u(lista, al_reves);
    COMPRUEBA(arr_NumElemsCADENA_u(lista) == 3);
    COMPRUEBA(igual(arr_GetCADENA_u(lista, 0), L"c"));
    COMPRUEBA(igual(arr_GetCADENA_u(lista, 2), L"a"));
    COMPRUEBA(lumospy_bloques_vivos() > 0);
    arr_DestruyeCADENA_u(&lista);
    COMPRUEBA(lista == 0);
}

static void prueba_registros(void) {
    ListaFicheros_u ficheros;
    unsigned long i;
    unsigned encontrado = 0;
    unsigned directorios = 0;
    Dirwin_u *enumerador;
    WIN32_FIND_DATAW entrada;
    COMPRUEBA(sizeof ficheros == 20);
    COMPRUEBA(sizeof(WIN32_FIND_DATAW) == 592);
    cdir_lista_de_ficheros_UNICODE(L"C:\\windows\\system32", L"dll", &ficheros);
    COMPRUEBA(igual(ficheros.path, L"C:\\windows\\system32"));
    for (i = 0; i < ficheros.num; ++i) {
        encontrado += (unsigned)igual(ficheros.lista[i], L"kernel32.dll");
    }
    COMPRUEBA(encontrado == 1);
    cdir_libera_lista_de_ficheros_UNICODE(&ficheros);
    COMPRUEBA(ficheros.path == 0 && ficheros.lista == 0);

    enumerador = dirwin_crea_UNICODE(L"C:\\windows\\*");
    COMPRUEBA(enumerador->busqueda != 0 && enumerador->num_entradas == 0);
    while (dirwin_findnextfile_UNICODE(enumerador, &entrada) == CIERTO) {
        directorios += (unsigned)(dirwin_es_directorio_UNICODE(&entrada) == CIERTO && igual(entrada.cFileName, L"system32"));
    }
    COMPRUEBA(directorios == 1);
    COMPRUEBA(enumerador->num_entradas > 2);
    dirwin_destruye_UNICODE(&enumerador);
}

static void prueba_anfitrion(void) {
    struct recibido r = {0, 0, 0};
    wchar_t *copia;
    error_interno_establece_receptor(recibe, &r);
    copia = widestr_nousar_copia(0, "msvc", 4321);
    COMPRUEBA(r.cuantos == 1 && r.primera != 0);
    error_interno_establece_receptor(0, 0);
    widestr_nousar_destruye_opcional(&copia, "msvc", __LINE__);
}

void principio(void) {
    const unsigned long long vivos = lumospy_bloques_vivos();
    prueba_cadenas();
    prueba_listas();
    prueba_registros();
    prueba_anfitrion();
    COMPRUEBA(lumospy_bloques_vivos() == vivos);
    ExitProcess(0);
}
