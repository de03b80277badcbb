// Giving the files of a directory another extension.
#include "apoyo/directorio.hpp"
#include "apoyo/fallos.hpp"
#include "cdir.h"
#include "companions/buclrein.h"

using namespace apoyo;

namespace {

using lista = std::vector<std::string>;

struct fila {
    const char* antigua;
    const char* nueva;
    lista queda;
};

const lista como_estaba = {"a.bak",        "a.tmp", "b.TMP",     "c.txt",
                           "notas.mi tmp", "sin",   "sub.tmp\\", "sub.tmp\\d.tmp"};

const fila filas[] = {
    {.antigua = ".tmp",
     .nueva = "bak",
     .queda = {"a.bak", "b.bak", "c.txt", "notas.mi tmp", "sin", "sub.tmp\\", "sub.tmp\\d.tmp"}},
    {.antigua = "tmp",
     .nueva = ".\u00f1",
     .queda = {"a.bak", "a.\u00f1", "b.\u00f1", "c.txt", "notas.mi tmp", "sin", "sub.tmp\\",
               "sub.tmp\\d.tmp"}},
    {.antigua = "tmp", .nueva = "tmp", .queda = como_estaba},
    {.antigua = ".tmp", .nueva = "tmp", .queda = como_estaba},
    {.antigua = "zip", .nueva = "bak", .queda = como_estaba},
    {.antigua = "",  // the files without one
     .nueva = "log",
     .queda = {"a.bak", "a.tmp", "b.TMP", "c.txt", "notas.mi tmp", "sin.log", "sub.tmp\\", "sub.tmp\\d.tmp"}},
};

void siembra(const directorio_temporal& d) {
    d.limpia();
    for (const char* nombre : {"a.tmp", "a.bak", "b.TMP", "c.txt", "notas.mi tmp", "sin", "sub.tmp\\d.tmp"}) {
        d.fichero(nombre, nombre);
    }
}

}  // namespace

TEST(cambia_extension, los_ficheros_del_directorio_cambian_de_extension) {
    const directorio_temporal d;
    for (const fila& caso : filas) {
        for (const char* final : {"", "\\"}) {
            siembra(d);
            cdir_cambia_extension_ficheros_u((d.ruta_w() + w(final)).c_str(), w(caso.antigua).c_str(),
                                             w(caso.nueva).c_str());
            lista queda = caso.queda;
            std::sort(queda.begin(), queda.end());
            EXPECT_EQ(d.arbol(), queda) << caso.antigua << " to " << caso.nueva;
        }
    }
}

TEST(cambia_extension, el_que_estaba_en_su_sitio_se_sustituye) {
    const directorio_temporal d;
    d.fichero("a.tmp", "nuevo");
    d.fichero("a.bak", "viejo", FILE_ATTRIBUTE_READONLY);
    cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), L".tmp", L"bak");
    EXPECT_EQ(d.arbol(), lista{"a.bak"});
    EXPECT_EQ(d.contenido("a.bak"), "nuevo");
}

TEST(cambia_extension, otra_caja_de_letra_no_borra_el_fichero) {
    struct caja {
        const char* antigua;
        const char* nueva;
    };
    for (const caja& c :
         {caja{"tmp", "TMP"}, caja{"\u00f1\u0434", "\u00d1\u0414"}, caja{"\u00c0x", "\u00e0x"}}) {
        const directorio_temporal d;
        const std::string nombre = std::string("a.") + c.antigua;
        d.fichero(nombre, "mio");
        cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), w(c.antigua).c_str(), w(c.nueva).c_str());
        EXPECT_EQ(d.contenido(nombre), "mio") << nombre;
        EXPECT_EQ(d.arbol().size(), 1u) << nombre;
    }
}

TEST(cambia_extension, sin_origen_no_se_borra_el_destino) {
    const directorio_temporal d;
    d.fichero("a.bak", "mio");
    buclrein_establece_politica(0, 0);
    // "*" lists every file, but no file bears it.
    cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), L"*", L"bak");
    EXPECT_EQ(d.contenido("a.bak"), "mio");
    EXPECT_EQ(toma_preguntas().size(), 1u);
}

TEST(cambia_extension, los_argumentos_nulos_se_informan) {
    cdir_cambia_extension_ficheros_u(nullptr, L"a", L"b");
    cdir_cambia_extension_ficheros_u(L"C:\\", nullptr, L"b");
    cdir_cambia_extension_ficheros_u(L"C:\\", L"a", nullptr);
    EXPECT_EQ(toma_expresiones(), lista(3, "dirBase!=NULL && oldExt!=NULL && newExt !=NULL"));
}

TEST(cambia_extension, falle_lo_que_falle_el_contenido_del_origen_no_se_pierde) {
    const directorio_temporal d;
    buclrein_establece_politica(1, 0);
    con_cada_fallo(
        [&] {
            d.limpia();
            d.fichero("a.tmp", "nuevo");
            d.fichero("a.bak", "viejo");
        },
        [&] { cdir_cambia_extension_ficheros_u(d.ruta_w().c_str(), L"tmp", L"bak"); },
        [&](const ronda& r) {
            EXPECT_TRUE(d.contenido("a.tmp") == "nuevo" || d.contenido("a.bak") == "nuevo") << r;
            toma_informes();
            toma_avisos();
            toma_preguntas();
            toma_esperas();
        });
}
