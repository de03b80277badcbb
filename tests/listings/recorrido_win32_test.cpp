// The walk of a tree: order, paths as the caller wrote them, what becomes of what cannot be entered, depth.
#include "listings/recorrido.hpp"

#include "apoyo/directorio.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/niveles.hpp"
#include "apoyo/volumen_falso.hpp"
#include "cdir.h"

using namespace apoyo;
using interno::entrada_leida;
using interno::llegada;
using interno::raiz_de_recorrido;
using interno::recorrido;
using interno::vista_w;

namespace {

using renglones = std::vector<std::string>;

const recorrido::orden por_nombre = {[](vista_w a, vista_w b) noexcept { return a.compare(b); }, false};
const recorrido::orden al_reves = {por_nombre.compara, true};

bool todo(const entrada_leida&) {
    return true;
}

// Every file and directory in the order of the walk, with its path; directories with "\" behind, those that were not
// entered with "!" before.
renglones recorre(recorrido& arbol) {
    renglones pasos;
    const auto anota = [&] {
        pasos.push_back(u8(arbol.ruta().ver()) + "\\");
        for (std::size_t i = 0; i < arbol.ficheros().num(); ++i) {
            pasos.push_back(u8(arbol.ruta(arbol.ficheros()[i].nombre).ver()));
        }
    };
    const auto se_ha_entrado = [](llegada como) {
        return como == llegada::leido || como == llegada::a_medias;
    };
    if (!se_ha_entrado(arbol.entra_en_raiz(todo))) {
        return {"!"};
    }
    anota();
    while (arbol.queda_hijo() || !arbol.en_la_raiz()) {
        if (!arbol.queda_hijo()) {
            arbol.sale();
        } else if (se_ha_entrado(arbol.entra_en_hijo(todo))) {
            anota();
        } else {
            pasos.push_back("!" + u8(arbol.ruta(arbol.ultimo_hijo().nombre).ver()) + "\\");
        }
    }
    return pasos;
}

}  // namespace

TEST(recorrido, ficheros_como_vienen_y_subdirectorios_en_su_orden) {
    volumen_falso v;
    v.pon("C:\\d", {{"f2"}, {"b", atributo_dir}, {"f1"}, {"a", atributo_dir}, {"B", atributo_dir}});
    v.pon("C:\\d\\a", {{"1"}});
    v.pon("C:\\d\\a\\x", {{"2"}});
    v.pon("C:\\d\\b", {{"3"}});
    const raiz_de_recorrido raiz_de_arbol(L"C:\\d");
    recorrido arbol(raiz_de_arbol, por_nombre);
    EXPECT_EQ(recorre(arbol),
              (renglones{"C:\\d\\", "C:\\d\\f2", "C:\\d\\f1", "C:\\d\\B\\", "C:\\d\\a\\", "C:\\d\\a\\1",
                         "C:\\d\\a\\x\\", "C:\\d\\a\\x\\2", "C:\\d\\b\\", "C:\\d\\b\\3"}));
    const raiz_de_recorrido raiz_de_otro(L"C:\\d");
    recorrido otro(raiz_de_otro, al_reves);
    EXPECT_EQ(recorre(otro),
              (renglones{"C:\\d\\", "C:\\d\\f2", "C:\\d\\f1", "C:\\d\\b\\", "C:\\d\\b\\3", "C:\\d\\a\\",
                         "C:\\d\\a\\1", "C:\\d\\a\\x\\", "C:\\d\\a\\x\\2", "C:\\d\\B\\"}));
}

TEST(recorrido, solo_se_guarda_lo_que_se_toma) {
    volumen_falso v;
    v.pon("C:\\d", {{"f"}, {"g"}, {"a", atributo_dir}, {"b", atributo_dir}});
    const raiz_de_recorrido raiz_de_arbol(L"C:\\d");
    recorrido arbol(raiz_de_arbol, por_nombre);
    renglones vistos;
    EXPECT_EQ(arbol.entra_en_raiz([&](const entrada_leida& e) {
        vistos.push_back(u8(e.nombre));
        return e.nombre == L"g" || e.nombre == L"b";
    }),
              llegada::leido);
    EXPECT_EQ(vistos, (renglones{"f", "g", "a", "b"})) << "neither . nor ..";
    ASSERT_EQ(arbol.ficheros().num(), 1u);
    EXPECT_EQ(u8(arbol.ficheros()[0].nombre.data()), "g") << "kept with its end";
    EXPECT_EQ(arbol.entra_en_hijo(todo), llegada::leido);
    EXPECT_EQ(u8(arbol.ruta().ver()), "C:\\d\\b");
    EXPECT_EQ(arbol.sale(), llegada::leido);
    EXPECT_FALSE(arbol.queda_hijo());
    EXPECT_EQ(u8(arbol.ultimo_hijo().nombre.data()), "b");
}

TEST(recorrido, las_rutas_empiezan_como_la_raiz_se_escribio) {
    struct fila {
        const wchar_t* dada;
        std::string abierta;
        renglones pasos;
    };
    wchar_t actual[MAX_PATH];
    ::GetCurrentDirectoryW(MAX_PATH, actual);
    const std::string aqui = u8(actual);
    const fila filas[] = {
        {L"C:\\d", "C:\\d", {"C:\\d\\", "C:\\d\\f", "C:\\d\\s\\", "C:\\d\\s\\g"}},
        {L"C:\\d\\", "C:\\d", {"C:\\d\\\\", "C:\\d\\f", "C:\\d\\s\\", "C:\\d\\s\\g"}},
        {L"C:\\d\\\\", "C:\\d", {"C:\\d\\\\\\", "C:\\d\\\\f", "C:\\d\\\\s\\", "C:\\d\\\\s\\g"}},
        {L"C:/d", "C:/d", {"C:/d\\", "C:/d\\f", "C:/d\\s\\", "C:/d\\s\\g"}},
        {L"C:/d/", "C:/d", {"C:/d/\\", "C:/d/f", "C:/d/s\\", "C:/d/s\\g"}},
        {L"C:\\", "C:\\", {"C:\\\\", "C:\\f", "C:\\s\\", "C:\\s\\g"}},
        {L"\\", aqui.substr(0, 2) + "\\", {"\\\\", "\\f", "\\s\\", "\\s\\g"}},
        {L"", aqui, {"\\", "f", "s\\", "s\\g"}},
        {L".", aqui, {".\\", ".\\f", ".\\s\\", ".\\s\\g"}},
        {L"r", aqui + "\\r", {"r\\", "r\\f", "r\\s\\", "r\\s\\g"}},
        {L"\\\\?\\C:\\d.",
         "\\\\?\\C:\\d.",
         {"\\\\?\\C:\\d.\\", "\\\\?\\C:\\d.\\f", "\\\\?\\C:\\d.\\s\\", "\\\\?\\C:\\d.\\s\\g"}},
        {L"\\\\srv\\r",
         "\\\\srv\\r",
         {"\\\\srv\\r\\", "\\\\srv\\r\\f", "\\\\srv\\r\\s\\", "\\\\srv\\r\\s\\g"}},
        {L"\\\\?\\Volume{1}\\",
         "\\\\?\\Volume{1}\\",
         {"\\\\?\\Volume{1}\\\\", "\\\\?\\Volume{1}\\f", "\\\\?\\Volume{1}\\s\\", "\\\\?\\Volume{1}\\s\\g"}},
    };
    for (const fila& caso : filas) {
        volumen_falso v;
        v.pon(caso.abierta, {{"f"}});
        v.pon(caso.abierta + "\\s", {{"g"}});
        const raiz_de_recorrido raiz_de_arbol(caso.dada);
        recorrido arbol(raiz_de_arbol, por_nombre);
        EXPECT_EQ(recorre(arbol), caso.pasos) << u8(caso.dada);
        ASSERT_FALSE(v.aperturas.empty());
        EXPECT_EQ(v.aperturas[0].nombre, caso.abierta) << u8(caso.dada);
        EXPECT_EQ(arbol.raiz().dada(), caso.dada);
    }
}

TEST(recorrido, la_raiz_que_falta_y_la_que_no_se_abre) {
    struct fila {
        DWORD codigo;
        llegada raiz;
        llegada hijo;
    };
    const fila filas[] = {
        {2, llegada::falta, llegada::falta},        {3, llegada::falta, llegada::falta},
        {53, llegada::falta, llegada::cerrado},  // an entry was there to be read
        {67, llegada::falta, llegada::cerrado},     {123, llegada::falta, llegada::cerrado},
        {161, llegada::falta, llegada::cerrado},    {5, llegada::cerrado, llegada::cerrado},
        {32, llegada::cerrado, llegada::cerrado},   {303, llegada::cerrado, llegada::cerrado},
        {1920, llegada::cerrado, llegada::cerrado}, {64, llegada::cerrado, llegada::cerrado},
    };
    for (const fila& caso : filas) {
        volumen_falso v;
        v.pon("C:\\d\\s", {{"g"}});
        v["C:\\d\\s"].codigo_al_abrir = caso.codigo;
        const raiz_de_recorrido raiz_de_solo(L"C:\\d\\s");
        recorrido solo(raiz_de_solo, por_nombre);
        EXPECT_EQ(solo.entra_en_raiz(todo), caso.raiz) << caso.codigo;
        EXPECT_EQ(solo.codigo(), caso.codigo);
        const raiz_de_recorrido raiz_de_arbol(L"C:\\d");
        recorrido arbol(raiz_de_arbol, por_nombre);
        ASSERT_EQ(arbol.entra_en_raiz(todo), llegada::leido);
        EXPECT_EQ(arbol.entra_en_hijo(todo), caso.hijo) << caso.codigo;
        EXPECT_EQ(arbol.codigo(), caso.codigo);
        EXPECT_TRUE(arbol.en_la_raiz());
        EXPECT_EQ(v.abiertas(), 1u);
    }
}

TEST(recorrido, los_enlaces_y_los_cambiados_no_se_recorren) {
    volumen_falso v;
    v.pon("C:\\fuera", {{"g"}});
    v.pon("C:\\d", {{"e", enlace_dir, IO_REPARSE_TAG_MOUNT_POINT, "C:\\fuera"},
                    {"s", atributo_dir},
                    {"t", atributo_dir}});
    v.pon("C:\\d\\s", {{"dentro"}});
    const raiz_de_recorrido raiz_de_raiz_enlace(L"C:\\d\\e");
    recorrido raiz_enlace(raiz_de_raiz_enlace, por_nombre);
    EXPECT_EQ(raiz_enlace.entra_en_raiz(todo), llegada::cerrado);
    EXPECT_EQ(raiz_enlace.codigo(), DWORD{ERROR_CANT_ACCESS_FILE});
    const raiz_de_recorrido raiz_de_con_barra(L"C:\\d\\e\\");
    recorrido con_barra(raiz_de_con_barra, por_nombre);
    EXPECT_EQ(con_barra.entra_en_raiz(todo), llegada::cerrado) << "the separator does not lead through";
    // "s" turns into a link, "t" into another directory, when the root has been read.
    const raiz_de_recorrido raiz_de_arbol(L"C:\\d");
    recorrido arbol(raiz_de_arbol, por_nombre);
    ASSERT_EQ(arbol.entra_en_raiz(todo), llegada::leido);
    ASSERT_TRUE(v.cambia("C:\\d\\s", {"", enlace_dir, IO_REPARSE_TAG_SYMLINK, "C:\\fuera"}));
    ASSERT_TRUE(v.cambia("C:\\d\\t", {"", atributo_dir}, {{"ajeno"}}));
    for (const char* cual : {"e", "s", "t"}) {
        EXPECT_EQ(arbol.entra_en_hijo(todo), llegada::cerrado) << cual;
        EXPECT_EQ(arbol.codigo(), DWORD{ERROR_CANT_ACCESS_FILE}) << cual;
        EXPECT_EQ(u8(arbol.ultimo_hijo().nombre), cual);
    }
    EXPECT_FALSE(arbol.queda_hijo());
}

TEST(recorrido, un_directorio_que_se_mueve_abierto_se_acaba_donde_esta) {
    volumen_falso v;
    v.pon("C:\\d\\s\\u", {{"g"}});
    v.pon("C:\\d\\s", {{"f"}});
    const raiz_de_recorrido raiz_de_arbol(L"C:\\d");
    recorrido arbol(raiz_de_arbol, por_nombre);
    ASSERT_EQ(arbol.entra_en_raiz(todo), llegada::leido);
    ASSERT_EQ(arbol.entra_en_hijo(todo), llegada::leido);
    ASSERT_TRUE(v.cambia("C:\\d\\s", {"", atributo_dir}, {{"ajeno"}, {"u", atributo_dir}}))
        << "nobody is kept out";
    EXPECT_EQ(arbol.entra_en_hijo(todo), llegada::leido);
    ASSERT_EQ(arbol.ficheros().num(), 1u);
    EXPECT_EQ(u8(arbol.ficheros()[0].nombre), "g");
}

TEST(recorrido, una_lectura_que_se_rompe) {
    volumen_falso v;
    v.pon("C:\\d", {{"f"}, {"s", atributo_dir}, {"z"}});
    v.pon("C:\\d\\s", {{"g"}});
    v["C:\\d"].codigo_al_final = ERROR_NETNAME_DELETED;
    const raiz_de_recorrido raiz_de_arbol(L"C:\\d");
    recorrido arbol(raiz_de_arbol, por_nombre);
    EXPECT_EQ(arbol.entra_en_raiz(todo), llegada::a_medias) << "what came is kept";
    EXPECT_EQ(arbol.ficheros().num(), 2u);
    auto informes = toma_informes();
    ASSERT_EQ(informes.size(), 1u);
    EXPECT_EQ(informes[0].detalle, "GetLastError() = 64 [z]");
    EXPECT_EQ(arbol.entra_en_hijo(todo), llegada::leido);
    EXPECT_EQ(arbol.sale(), llegada::leido);
    EXPECT_EQ(arbol.sale(), llegada::a_medias);
    // Before anything came: it was not entered, and nothing is said.
    v["C:\\d"].codigo_al_listar = ERROR_ACCESS_DENIED;
    const raiz_de_recorrido raiz_de_otro(L"C:\\d");
    recorrido otro(raiz_de_otro, por_nombre);
    EXPECT_EQ(otro.entra_en_raiz(todo), llegada::cerrado);
    EXPECT_EQ(otro.codigo(), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(v.abiertas(), 0u);
}

TEST(recorrido, la_raiz_se_quita_solo_si_es_la_que_se_recorrio) {
    for (const bool cambiada : {false, true}) {
        volumen_falso v;
        v.pon("C:\\d", {});
        const raiz_de_recorrido raiz_de_arbol(L"C:\\d\\");
        recorrido arbol(raiz_de_arbol, por_nombre);
        ASSERT_EQ(arbol.entra_en_raiz(todo), llegada::leido);
        ASSERT_TRUE(!cambiada || v.cambia("C:\\d", {"", atributo_dir}));
        EXPECT_EQ(arbol.borra_raiz(), cambiada ? ERROR_CANT_ACCESS_FILE : 0u);
        EXPECT_EQ(v.hay("C:\\d"), cambiada);
    }
}

TEST(recorrido, muchos_niveles_de_verdad) {
    const directorio_temporal d;
    const std::size_t niveles = a_fondo() ? 1'000 : 200;  // Wine's cost grows with the cube of the depth
    const texto_w raiz = d.ruta_w("t");
    d.directorio("t");
    ASSERT_TRUE(crea_niveles(raiz.c_str(), niveles, L"n", L"f"));
    {
        const raiz_de_recorrido raiz_de_arbol(raiz.c_str());
        recorrido arbol(raiz_de_arbol, por_nombre);
        const renglones pasos = recorre(arbol);
        ASSERT_EQ(pasos.size(), niveles + 2);
        std::string ruta = d.ruta("t");
        for (std::size_t i = 0; i <= niveles; ++i) {
            EXPECT_EQ(pasos[i], ruta + "\\");
            ruta += i < niveles ? "\\n" : "\\f";
        }
        EXPECT_EQ(pasos.back(), ruta);
    }
    // A thousand levels are too much for paths (and for who tidies up after this test).
    EXPECT_EQ(cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE(raiz.c_str(), nullptr), 1);
}

TEST(recorrido, ningun_fallo_deja_nada_abierto) {
    const directorio_temporal d;
    d.fichero("t\\s\\g");
    d.fichero("t\\f");
    const texto_w raiz = d.ruta_w("t");
    con_cada_fallo(
        [] {},
        [&] {
            const raiz_de_recorrido raiz_de_arbol(raiz.c_str());
            recorrido arbol(raiz_de_arbol, por_nombre);
            const renglones pasos = recorre(arbol);
            for (const std::string& p : pasos) {
                EXPECT_TRUE(p == "!" || p.starts_with(d.ruta("t")) || p.starts_with("!" + d.ruta("t"))) << p;
            }
        },
        [&](const ronda& r) {
            toma_informes();
            EXPECT_EQ(d.arbol(), (renglones{"t\\", "t\\f", "t\\s\\", "t\\s\\g"})) << r;
        });
}
