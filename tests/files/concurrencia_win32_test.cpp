// Many at once: sixteen threads, each with data and trees of its own, and eight processes in one directory; and a
// process that is stopped in the middle of deleting a tree. Results are right, every block and handle comes back, and
// nothing beside or behind the tree is touched.
//
// Short here. tools/largo stress gives LUMODIR_SEGUNDOS (how long the threads and processes go on) and LUMODIR_PARADAS (how
// many deletions are stopped).
#include <atomic>
#include <cstdlib>
#include <memory>
#include <random>
#include <thread>

#include "apoyo/directorio.hpp"
#include "apoyo/enlace.hpp"
#include "apoyo/hijo.hpp"
#include "apoyo/recursos.hpp"
#include "cdir.h"
#include "cdir_ficheros.h"
#include "cdir_listas.h"
#include "cdir_rutas.h"
#include "companions/lumospy.h"
#include "companions/lumospy.hpp"
#include "companions/lumostr.h"
#include "companions/widestr.h"
#include "dirwin.h"
#include "fichsdir.h"
#include "lumodir.h"
#include "nomsfich.h"
#include "timefich.h"

using namespace apoyo;

namespace {

unsigned del_entorno(const wchar_t* nombre, unsigned si_no_hay) {
    const texto_w texto = variable(nombre);
    return texto.empty() ? si_no_hay : static_cast<unsigned>(std::wcstoul(texto.c_str(), nullptr, 10));
}
ULONGLONG dentro_de_segundos(unsigned segundos) {
    return ::GetTickCount64() + 1000ull * segundos;
}

// Texts of a thread: taken without the recorder, which is not made for several.
bool es(wchar_t* texto, const texto_w& lo_que_debe) {
    const bool igual = texto != nullptr && lo_que_debe == texto;
    widestr_nousar_destruye_opcional(&texto, "prueba", 1);
    return igual;
}
bool es(char* texto, const texto_a& lo_que_debe) {
    const bool igual = texto != nullptr && lo_que_debe == texto;
    lumostr_destruye_opcional(&texto);
    return igual;
}

// What fails in a thread: the first thing, by its line.
std::atomic<int> g_linea{0};
void exige(bool condicion, int linea) {
    int ninguna = 0;
    if (!condicion) {
        g_linea.compare_exchange_strong(ninguna, linea);
    }
}
#define EXIGE(condicion) exige(condicion, __LINE__)

void llama_a_las_de_texto(const std::string& mio) {
    const texto_w fichero = w("C:\\dir\\" + mio + ".txt");
    const texto_a fichero_8 = cp1252("C:\\dir\\" + mio + ".txt");
    EXIGE(cdir_path_valido_UNICODE(fichero.c_str(), 0) == 1);
    EXIGE(cdir_path_valido(fichero_8.c_str(), 0) == 1);
    EXIGE(es(cdir_nombre_base_fichero_UNICODE(fichero.c_str()), w(mio)));
    EXIGE(es(cdir_nombre_base_fichero(fichero_8.c_str()), cp1252(mio)));
    EXIGE(es(cdir_nombre_y_ext_fichero_UNICODE(fichero.c_str()), w(mio + ".txt")));
    EXIGE(es(cdir_nombre_fichero_con_ext(fichero_8.c_str(), "dat"), cp1252("C:\\dir\\" + mio + ".dat")));
    EXIGE(es(cdir_makepath_UNICODE(L"C:", L"\\dir", w(mio).c_str(), L"txt"), fichero));
    EXIGE(es(cdir_concatena_directorios_UNICODE(L"C:\\a", w(mio).c_str()), w("C:\\a\\" + mio)));
    EXIGE(es(lumodir_ruta_absoluta_a_relativa(L"C:\\dir", fichero.c_str()), w(mio + ".txt")));
    wchar_t* piezas[4] = {};
    cdir_splitpath_con_comprobacion_UNICODE(fichero.c_str(), &piezas[0], &piezas[1], &piezas[2], &piezas[3]);
    EXIGE(es(piezas[0], L"C:"));
    EXIGE(es(piezas[1], L"\\dir\\"));
    EXIGE(es(piezas[2], w(mio)));
    EXIGE(es(piezas[3], L".txt"));
    Nomsfich* registro = nomsfich_crea(cp1252(mio + ".TXT").c_str());
    EXIGE(es(nomsfich_nombre_fichero(registro), cp1252(mio + ".txt")));
    nomsfich_destruye(&registro);
}

// A tree of this thread alone, made, looked at in every way, and deleted.
void arbol(const texto_w& raiz) {
    const texto_w hondo = raiz + L"\\a\\b\\c";
    EXIGE(cdir_crea_directorios_UNICODE(hondo.c_str(), 1) == 1);
    EXIGE(cdir_existe_directorio_UNICODE(hondo.c_str()) == 1);
    EXIGE(cdir_es_directorio_u(hondo.c_str()) == 1);
    wchar_t* unico = lumodir_creaFicheroUnicoEnDirectorio(raiz.c_str(), L"txt");
    EXIGE(cdir_existe_fichero_UNICODE(unico) == 1);
    EXIGE(cdir_se_puede_escribir_UNICODE(unico) == 1);
    EXIGE(timefich_asignar_fecha_fichero_UTC(unico, 1'600'000'000) == 1);
    EXIGE(timefich_obtener_fecha_fichero_UTC(unico) == 1'600'000'000);
    unsigned long error = 0;
    EXIGE(lumodir_get_tamanyo_fichero(unico, &error) == 0);
    ListaFicheros_u lista = {};
    cdir_lista_de_ficheros_UNICODE(raiz.c_str(), L"txt", &lista);
    EXIGE(lista.num == 1);
    cdir_libera_lista_de_ficheros_UNICODE(&lista);
    ArrCADENA_u* directorios = fichsdir_directorios_u(raiz.c_str());
    EXIGE(arr_NumElemsCADENA_u(directorios) == 1);
    arr_DestruyeCADENA_u(&directorios);
    ArrPunteroConTipo* ficheros = fichsdir_ficheros_u(raiz.c_str());
    EXIGE(arr_NumElemsPuntero(ficheros) == 1);
    arr_DestruyeEstructurasConTipo(
        &ficheros, reinterpret_cast<ArrDestruyeRegistro>(reinterpret_cast<void (*)()>(fichsdir_destruye)));
    EXIGE(lumodir_existenSubdirectorios_UNICODE(raiz.c_str()) == 1);
    lumodir_protege_fichero_UNICODE(unico);
    EXIGE(cdir_se_puede_leer_UNICODE(unico) == 1);
    widestr_nousar_destruye(&unico, "prueba", 1);
    EXIGE(cdir_borra_directorio_y_subdirectorios_UNICODE(raiz.c_str()) == 1);
    EXIGE(cdir_existe_directorio_UNICODE(raiz.c_str()) == 0);
}

}  // namespace

TEST(concurrencia, dieciseis_hilos_cada_uno_con_lo_suyo) {
    constexpr unsigned num_hilos = 16;
    const directorio_temporal d;
    g_linea = 0;
    const unsigned long long vivos = lumospy_bloques_vivos();
    std::size_t antes = 0;
    std::atomic<unsigned long> vueltas{0};
    // The first turn leaves behind what the system keeps for itself.
    for (const unsigned segundos : {0u, del_entorno(L"LUMODIR_SEGUNDOS", 1)}) {
        antes = manijas_del_proceso();
        const ULONGLONG fin = dentro_de_segundos(segundos);
        std::vector<std::thread> hilos;
        for (unsigned i = 0; i < num_hilos; ++i) {
            hilos.emplace_back([&, i] {
                const std::string mio = "hilo\xC3\xB1" + std::to_string(i);
                const texto_w raiz = d.ruta_w(mio);
                do {
                    for (int k = 0; k < 10; ++k) {
                        llama_a_las_de_texto(mio);
                    }
                    arbol(raiz);
                    ++vueltas;
                } while (g_linea == 0 && ::GetTickCount64() < fin);
            });
        }
        for (std::thread& hilo : hilos) {
            hilo.join();
        }
    }
    EXPECT_EQ(g_linea, 0) << "line of the first thing that went wrong";
    EXPECT_EQ(lumospy_bloques_vivos(), vivos);
    // Whoever waits for a lock for the first time may cost the system a handle, once; what a round leaves open adds up.
    EXPECT_LT(manijas_del_proceso(), antes + num_hilos);
    EXPECT_EQ(d.arbol(), std::vector<std::string>());
    EXPECT_GE(vueltas, 2 * num_hilos);
    std::printf("rounds of 16 threads: %lu\n", vueltas.load());
}

// ---- processes

namespace {

// Creates, lists and deletes files and directories of its own in a directory that others use as well.
int uno_de_muchos() {
    const texto_w comun = hijo_dato();
    const texto_w mio = comun + w("\\p" + std::to_string(::GetCurrentProcessId()));
    const ULONGLONG fin = dentro_de_segundos(del_entorno(L"LUMODIR_SEGUNDOS", 1));
    std::size_t antes = 0;
    unsigned long vueltas = 0;
    do {
        if (vueltas == 1) {
            antes = manijas_del_proceso();
        }
        arbol(mio);
        wchar_t* unico = lumodir_creaFicheroUnicoEnDirectorio(comun.c_str(), L"tmp");
        EXIGE(cdir_existe_fichero_UNICODE(unico) == 1);
        // The others' entries come and go: the listing may show any of them, and must show its own.
        ArrCADENA_u* nombres = fichsdir_nombres_ficheros_u(comun.c_str());
        bool esta = false;
        for (unsigned long i = 0; i < arr_NumElemsCADENA_u(nombres); ++i) {
            const texto_w entero = comun + L"\\" + arr_GetCADENA_u(nombres, i);
            esta = esta || ::CompareStringOrdinal(entero.c_str(), -1, unico, -1, TRUE) == CSTR_EQUAL;
        }
        EXIGE(esta);
        arr_DestruyeCADENA_u(&nombres);
        EXIGE(cdir_borra_fichero_UNICODE(unico) == 1);
        widestr_nousar_destruye(&unico, "prueba", 1);
        ++vueltas;
    } while (g_linea == 0 && (vueltas < 3 || ::GetTickCount64() < fin));
    EXIGE(manijas_del_proceso() == antes);
    EXIGE(lumospy_bloques_vivos() == 0);
    return g_linea;
}
const papel papel_uno_de_muchos("uno_de_muchos", uno_de_muchos);

}  // namespace

TEST(concurrencia, ocho_procesos_en_un_directorio) {
    const directorio_temporal d;
    std::vector<std::unique_ptr<proceso_hijo>> hijos;
    for (int i = 0; i < 8; ++i) {
        hijos.push_back(std::make_unique<proceso_hijo>("uno_de_muchos", d.ruta_w()));
    }
    for (const auto& hijo : hijos) {
        EXPECT_EQ(hijo->espera_fin(del_entorno(L"LUMODIR_SEGUNDOS", 1)), 0u)
            << "line of the first thing that went wrong";
    }
    EXPECT_EQ(d.arbol(), std::vector<std::string>());
}

// ---- stopped half-way

namespace {

const papel papel_borra_entero("borra_entero", [] {
    const texto_w raiz = hijo_dato();
    hijo_listo();
    return cdir_borra_directorio_y_subdirectorios_UNICODE(raiz.c_str()) == 1 ? 0 : 1;
});

}  // namespace

TEST(concurrencia, un_borrado_parado_a_medias_se_acaba_en_otro_y_no_toca_nada_mas) {
    const unsigned paradas = del_entorno(L"LUMODIR_PARADAS", 5);
    const directorio_temporal d;
    d.fichero("al lado\\centinela.txt", "centinela");
    d.fichero("detras\\sub\\centinela.txt", "centinela");
    const std::vector<std::string> al_lado = d.arbol("al lado");
    const std::vector<std::string> detras = d.arbol("detras");
    unsigned a_medias = 0;
    std::mt19937 azar(paradas);
    // On a busy machine more of them are over, or have not begun, when they are stopped: then some more.
    unsigned i = 0;
    for (; i < paradas || (a_medias < paradas / 5 && i < 4 * paradas); ++i) {
        for (int a = 0; a < 6; ++a) {
            for (int b = 0; b < 12; ++b) {
                d.fichero("arbol\\d" + std::to_string(a) + "\\e\\f" + std::to_string(b) + ".txt", "x",
                          b % 3 == 0 ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL);
            }
        }
        const std::size_t entero = d.arbol("arbol").size();
        // The link goes with the tree; what it points to stays.
        const enlace al_otro(d.ruta("arbol\\d3"), "enlace", "..\\..\\detras");
        if (!al_otro.hecho()) {
            GTEST_SKIP() << al_otro.motivo();
        }
        {
            const proceso_hijo hijo("borra_entero", d.ruta_w("arbol"));
            ASSERT_TRUE(hijo.espera_listo());
            for (unsigned vueltas = azar() % 60; vueltas > 0; --vueltas) {
                ::Sleep(vueltas % 8 == 0 ? 1 : 0);
            }
        }  // stopped, wherever it was
        const std::size_t queda = d.existe("arbol") ? d.arbol("arbol").size() : 0;
        a_medias += queda > 0 && queda < entero ? 1 : 0;
        if (d.existe("arbol")) {
            cdir_borra_directorio_y_subdirectorios_UNICODE(d.ruta_w("arbol").c_str());
        }
        toma_informes();
        toma_avisos();
        toma_preguntas();
        EXPECT_EQ(d.arbol("al lado"), al_lado);
        EXPECT_EQ(d.arbol("detras"), detras);
        EXPECT_EQ(d.contenido("al lado\\centinela.txt"), "centinela");
        EXPECT_EQ(d.contenido("detras\\sub\\centinela.txt"), "centinela");
        // Wine does not remove a Unix link: it is what may stay, with the directories above it.
        for (const std::string& resto : d.existe("arbol") ? d.arbol("arbol") : std::vector<std::string>()) {
            EXPECT_TRUE(resto == "arbol\\d3\\" || resto == "arbol\\d3\\enlace\\") << resto;
        }
        if (HasFailure()) {
            return;
        }
    }
    std::printf("deletions stopped: %u, half-way: %u\n", i, a_medias);
    EXPECT_GE(a_medias, paradas / 5) << "too few were stopped while they deleted";
}
