// Sixteen threads at once, each with texts of its own, through every text export in both flavours: each must get, and
// tell its host, what it gets alone. What they share is the census, the language and the catalogue. ThreadSanitizer
// watches in the preset native-tsan (tools/largo tsan). An executable of its own: the first test must find the language not
// chosen yet.
#include <gtest/gtest.h>

#include <barrier>
#include <thread>
#include <vector>

#include "apoyo/textos.hpp"
#include "cdir.h"
#include "companions/acadorde.h"
#include "companions/apunorde.h"
#include "companions/arr.h"
#include "companions/error_interno.h"
#include "companions/lmaviso.h"
#include "companions/lumospy.h"
#include "companions/lumospy.hpp"
#include "companions/lumostr.h"
#include "companions/msglocal.h"
#include "companions/widestr.h"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "listings/filtro.hpp"
#include "listings/filtro_extension.hpp"
#include "lumodir.h"
#include "nomsfich.h"
#include "paths/path_correcto.hpp"
#include "system/multicadena.hpp"

using apoyo::texto_a;
using apoyo::texto_w;
using apoyo::toma;
using apoyo::u8;
using interno::vista_a;
using interno::vista_w;

namespace {

constexpr unsigned hilos = 16;
constexpr unsigned rondas = 20;

// What one thread was given and told.
thread_local std::string diario;

void anota(const std::string& texto) {
    diario += texto;
    diario += '\n';
}
void anota(unsigned long numero) {
    anota(std::to_string(numero));
}
void anota(wchar_t* texto) {
    anota(toma(texto));
}
void anota(char* texto) {
    anota(toma(texto));
}

void recibe_informe(const char* expresion, const char* etiqueta, unsigned long linea, const wchar_t* detalle,
                    void*) {
    anota(std::string(etiqueta) + expresion + std::to_string(linea) + u8(detalle));
}
void recibe_aviso(const wchar_t* texto, void*) {
    anota(u8(texto));
}

// All threads begin at the same moment.
template <class F>
void a_la_vez(F f) {
    std::barrier salida(static_cast<std::ptrdiff_t>(hilos));
    std::vector<std::thread> todos;
    for (unsigned i = 0; i < hilos; ++i) {
        todos.emplace_back([&, i] {
            salida.arrive_and_wait();
            f(i);
        });
    }
    for (std::thread& hilo : todos) {
        hilo.join();
    }
}

// The texts of one thread: alike in kind, different in content; every third set has something wrong.
struct textos {
    explicit textos(unsigned i)
        : letra(1, static_cast<char>('a' + i)),
          path("C:\\" + letra + "\xC3\xB1\\dir " + letra + "\\f" + letra),
          base("\\\\srv" + letra + "\\share\\" + letra),
          nombre(" n" + letra + (i % 3 == 0 ? "|?. " : ".txt")),
          extension(i % 2 == 0 ? ".html" : "t" + letra) {
        path += i % 3 == 1 ? "*.t" : ".tar.gz ";
    }
    std::string letra, path, base, nombre, extension;
};

void juzga(const textos& t) {
    const texto_w path = apoyo::w(t.path);
    const texto_a path_a = apoyo::cp1252(t.path);
    texto_w nombre = apoyo::w(t.nombre);
    wchar_t* mensaje = nullptr;
    anota(cdir_path_valido_UNICODE(path.c_str(), 1));
    anota(cdir_path_valido(path_a.c_str(), 1));
    anota(cdir_es_path_valido_UNICODE(path.c_str(), &mensaje));
    anota(mensaje);
    anota(cdir_nombre_base_valido_UNICODE(nombre.data()));
    anota(cdir_nombre_base_valido(t.nombre.c_str()));
    anota(cdir_nombre_fichero_valido(nombre.data()));
    for (const interno::veredicto& juicio : {interno::i_path_correcto_con_comodines(path_a),
                                             interno::i_path_correcto_con_comodines_UNICODE(vista_w(path))}) {
        anota(juicio.correcto);
        anota(juicio.es_unc);
    }
}

template <class C>
void anota_piezas(void (*corta)(const C*, C**, C**, C**, C**), const C* path) {
    C* piezas[4] = {};
    corta(path, &piezas[0], &piezas[1], &piezas[2], &piezas[3]);
    for (C* pieza : piezas) {
        anota(pieza);
    }
}

void corta_y_compone(const textos& t) {
    for (const std::string& path : {t.path, t.base + "\\x.y"}) {
        const texto_w w = apoyo::w(path);
        const texto_a a = apoyo::cp1252(path);
        anota_piezas(cdir_splitpath_con_comprobacion_UNICODE, w.c_str());
        anota_piezas(cdir_splitpath_con_comprobacion, a.c_str());
        anota_piezas(cdir_splitpath_con_comodines_UNICODE, w.c_str());
        anota_piezas(cdir_splitpath_con_comodines, a.c_str());
        anota(cdir_split_make_path_UNICODE(w.c_str(), 11));
        anota(cdir_split_make_path(a.c_str(), 13));
    }
    const texto_w base = apoyo::w(t.base);
    const texto_w nombre = apoyo::w(t.nombre);
    const texto_w extension = apoyo::w(t.extension);
    anota(cdir_makepath_UNICODE(base.c_str(), L"d\\e", nombre.c_str(), extension.c_str()));
    anota(cdir_makepath(t.base.c_str(), "d\\e", t.nombre.c_str(), t.extension.c_str()));
    anota(cdir_makepath_con_comodines_UNICODE(L"C:", base.c_str(), nombre.c_str(), nullptr));
    anota(cdir_makepath_con_comodines("C:", t.base.c_str(), t.nombre.c_str(), nullptr));
}

void repara(const textos& t) {
    const texto_w nombre = apoyo::w(t.nombre);
    const texto_w extension = apoyo::w(t.extension);
    texto_w bufer_w(12, L'#');
    texto_a bufer_a(12, '#');
    anota(cdir_convierte_a_nombre_base_valido_UNICODE(nombre.c_str(), bufer_w.data(), 11));
    anota(cdir_convierte_a_nombre_base_valido(t.nombre.c_str(), bufer_a.data(), 11));
    anota(u8(bufer_w.c_str()) + bufer_a);
    anota(cdir_dame_nombre_base_valido_UNICODE(nombre.c_str()));
    anota(cdir_extension_valida_UNICODE(extension.c_str()));
    anota(cdir_extension_valida(t.nombre.c_str()));
    anota(cdir_extension_con_dolar_UNICODE(extension.c_str()));
}

void saca_componentes(const textos& t) {
    const texto_w path = apoyo::w(t.path);
    const texto_a path_a = apoyo::cp1252(t.path);
    for (const auto f :
         {cdir_nombre_base_fichero_UNICODE, cdir_extension_fichero_UNICODE, cdir_nombre_y_ext_fichero_UNICODE,
          cdir_nombre_de_fichero_suprimiendo_path_UNICODE, cdir_ruta_acceso_directorio_fichero_UNICODE,
          cdir_ruta_y_nombre_fichero_sin_extension_UNICODE, cdir_nombre_fichero_abreviado_UNICODE}) {
        anota(f(path.c_str()));
    }
    for (const auto f : {cdir_nombre_base_fichero, cdir_extension_fichero, cdir_nombre_y_ext_fichero,
                         cdir_nombre_de_fichero_suprimiendo_path, cdir_ruta_acceso_directorio_fichero,
                         cdir_ruta_y_nombre_fichero_sin_extension, nomsfich_nombre_base_path_completo}) {
        anota(f(path_a.c_str()));
    }
    anota(cdir_nombre_fichero_con_ext_UNICODE(path.c_str(), L"x"));
    anota(cdir_nombre_fichero_con_ext(path_a.c_str(), "x"));
    wchar_t* variable = widestr_nousar_copia(path.c_str(), "hilos", 1);
    cdir_cambia_extension_nombre_fichero_u(&variable, L"y");
    lumodir_suprime_barra_final_si_hay(&variable);
    anota(variable);
    wchar_t* directorio = nullptr;
    wchar_t* nombre = nullptr;
    lumodir_directorio_y_nombre_base_fichero_UNICODE(path.c_str(), 1, &directorio, &nombre);
    anota(directorio);
    anota(nombre);
    char* directorio_a = nullptr;
    char* nombre_a = nullptr;
    lumodir_directorio_y_nombre_base_fichero(path_a.c_str(), 0, &directorio_a, &nombre_a);
    anota(directorio_a);
    anota(nombre_a);
}

void une(const textos& t) {
    const texto_w base = apoyo::w(t.base);
    const texto_w path = apoyo::w(t.path);
    anota(cdir_concatena_directorios_UNICODE(base.c_str(), path.c_str()));
    anota(cdir_concatena_directorios(t.base.c_str(), t.nombre.c_str()));
    anota(cdir_construye_path_UNICODE(base.c_str(), L"\\b", path.c_str()));
    anota(cdir_construye_path(t.base.c_str(), "\\b", t.nombre.c_str()));
    anota(lumodir_ruta_es_absoluta(path.c_str()));
    anota(lumodir_ruta_absoluta_a_relativa(base.c_str(), (base + L"\\z").c_str()));
    anota(lumodir_ruta_relativa_a_absoluta(path.c_str(), L".\\z"));
    anota(cdir_ruta_abreviada_con_logitud_maxima_u((path + L"\\uno\\dos\\tres\\f").c_str(), 20));
    ArrCADENA_u* lista = lumodir_directorios_del_path();
    for (unsigned long i = 0; i < arr_NumElemsCADENA_u(lista); ++i) {
        anota(u8(arr_GetCADENA_u(lista, i)));
    }
    arr_DestruyeCADENA_u(&lista);
}

void crea_registros(const textos& t) {
    Nomsfich* uno = nomsfich_crea(t.nombre.c_str());
    Nomsfich* otro = nomsfich_crea_por_nombre_base_y_extension(t.nombre.c_str(), "EXT ");
    Nomsfich* copia = nomsfich_copia(uno);
    Nomsfich* cambiado = nomsfich_cambia_extension(uno, t.extension.c_str());
    anota(nomsfich_iguales(uno, copia));
    anota(nomsfich_compara(uno, otro) < 0 ? 1 : 0);
    anota(nomsfich_misma_extension(t.extension.c_str(), t.nombre.c_str()));
    anota(nomsfich_mismo_nombre_base(t.extension.c_str(), t.extension.c_str()));
    for (Nomsfich** registro : {&uno, &otro, &copia, &cambiado}) {
        anota(std::string(nomsfich_nombre_base_fichero(*registro)) + nomsfich_extension_fichero(*registro));
        anota(nomsfich_nombre_fichero(*registro));
        nomsfich_destruye(registro);
    }
}

void llena_listas(const textos& t) {
    ArrCADENA* lista = arr_CreaCADENA(2);
    AcadOrde* orden = acadorde_crea(0);
    for (const std::string& texto : {t.path, t.nombre, t.base, t.nombre, t.letra}) {
        arr_AppendCADENA(lista, texto.c_str());
        acadorde_inserta(orden, texto.c_str());
    }
    arr_QSortCADENA(lista, nullptr);
    arr_BorrarCADENA(lista, 1);
    arr_SetCADENA(lista, 0, t.extension.c_str());
    arr_ReduceTamanyoCADENA(lista, 3);
    for (unsigned long i = 0; i < arr_NumElemsCADENA(lista); ++i) {
        anota(arr_GetCopiaCADENA(lista, i));
    }
    for (unsigned long i = 0; i < acadorde_num_elems(orden); ++i) {
        anota(std::string(acadorde_get(orden, i)));
    }
    arr_DestruyeCADENA(&lista);
    acadorde_destruye(&orden);
    void* bloque = lumospy_nousar_realloc(lumospy_nousar_calloc(3, 5), 4000);
    lumospy_nousar_free_pp(&bloque);
}

void filtra(const textos& t) {
    const texto_w nombre = apoyo::w(t.nombre);
    anota(interno::i_cumple_filtro<wchar_t>(vista_w(nombre), L"*.t?t") ? 1 : 0);
    anota(interno::i_cumple_filtro<char>(t.nombre, " n*") ? 1 : 0);
    anota(interno::filtro_extension(L"t?t").admite(vista_w(nombre)) ? 1 : 0);
    interno::i_para_cada_trozo(vista_w(nombre), [](vista_w trozo) { anota(u8(trozo)); });
}

void muestra_mensajes(const textos& t) {
    anota(msglocal_dame_idioma());
    for (const interno::fila_catalogo& mensaje : interno::catalogo) {
        anota(u8(interno::i_mensaje(mensaje.construye, {vista_w(apoyo::w(t.letra)), 7}).ver()));
    }
    interno::i_muestra_mensaje(interno::i_msg_53955_fichero_no_correcto, vista_w(apoyo::w(t.path)));
}

// Everything once; what came of it.
std::string ronda(unsigned i) {
    const textos t(i);
    diario.clear();
    juzga(t);
    corta_y_compone(t);
    repara(t);
    saca_componentes(t);
    une(t);
    crea_registros(t);
    llena_listas(t);
    filtra(t);
    muestra_mensajes(t);
    return diario;
}

TEST(hilos, preguntan_por_el_idioma_a_la_vez) {
    unsigned long idiomas[hilos] = {};
    a_la_vez([&](unsigned i) { idiomas[i] = msglocal_dame_idioma(); });
    for (const unsigned long idioma : idiomas) {
        EXPECT_EQ(idioma, 8u);  // the user of the native platform reads English
    }
}

TEST(hilos, cada_uno_obtiene_lo_que_obtiene_solo) {
    error_interno_establece_receptor(recibe_informe, nullptr);
    lmaviso_establece_receptor(recibe_aviso, nullptr);
    const unsigned long long vivos = lumospy_bloques_vivos();
    const unsigned long long internos = interno::i_bloques_internos_vivos();
    std::vector<std::string> solos;
    for (unsigned i = 0; i < hilos; ++i) {
        solos.push_back(ronda(i));
        ASSERT_GT(solos.back().size(), 1000u);
    }
    ASSERT_NE(solos[0], solos[1]);
    unsigned distintas[hilos] = {};
    a_la_vez([&](unsigned i) {
        for (unsigned n = 0; n < rondas; ++n) {
            distintas[i] += ronda(i) != solos[i] ? 1 : 0;
        }
    });
    for (unsigned i = 0; i < hilos; ++i) {
        EXPECT_EQ(distintas[i], 0u) << "thread " << i;
    }
    EXPECT_EQ(lumospy_bloques_vivos(), vivos);
    EXPECT_EQ(interno::i_bloques_internos_vivos(), internos);
}

// Blocks that one thread makes and another one frees: the census forgets none.
TEST(hilos, el_censo_cuenta_lo_que_pasa_de_uno_a_otro) {
    constexpr unsigned por_hilo = 500;
    const unsigned long long vivos = lumospy_bloques_vivos();
    std::vector<std::vector<wchar_t*>> hechos(hilos);
    a_la_vez([&](unsigned i) {
        for (unsigned n = 0; n < por_hilo; ++n) {
            hechos[i].push_back(widestr_nousar_copia(L"texto", "hilos", n));
        }
    });
    EXPECT_EQ(lumospy_bloques_vivos(), vivos + hilos * por_hilo);
    a_la_vez([&](unsigned i) {
        for (wchar_t*& texto : hechos[(i + 1) % hilos]) {
            widestr_nousar_destruye(&texto, "hilos", 1);
        }
    });
    EXPECT_EQ(lumospy_bloques_vivos(), vivos);
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
