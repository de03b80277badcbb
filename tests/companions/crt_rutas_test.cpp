// Splitting and composing as the C runtime does it, in both flavours, row by row and against naive models.
#include "companions/crt_rutas.hpp"

#include "apoyo/apoyo.hpp"
#include "paths/modelos.hpp"

using namespace apoyo;
using interno::crt_makepath;
using interno::crt_splitpath;
using interno::trozos_de_ruta;
using interno::vista;
using interno::vista_a;
using interno::vista_w;

namespace {

using piezas_a = modelos::piezas<std::string>;

piezas_a corta_a(const std::string& ruta) {
    const trozos_de_ruta<char> t = crt_splitpath(vista_a(ruta));
    return {std::string(t.unidad), std::string(t.directorio), std::string(t.nombre),
            std::string(t.extension)};
}

piezas_a corta_w(const std::string& ruta) {
    const texto_w ruta_w = w(ruta);
    const trozos_de_ruta<wchar_t> t = crt_splitpath(vista_w(ruta_w));
    return {u8(t.unidad), u8(t.directorio), u8(t.nombre), u8(t.extension)};
}

// Pieces as views; "(NULL)" is one that is not given.
vista_a dada(const std::string& pieza) {
    return pieza == "(NULL)" ? vista_a() : vista_a(pieza);
}

std::string compone_a(const piezas_a& p) {
    return toma(crt_makepath(dada(p.unidad), dada(p.directorio), dada(p.nombre), dada(p.extension)).suelta());
}

std::string compone_w(const piezas_a& p) {
    const texto_w piezas[] = {w(dada(p.unidad)), w(dada(p.directorio)), w(dada(p.nombre)),
                              w(dada(p.extension))};
    const auto ver = [&](std::size_t i, const std::string& original) {
        return original == "(NULL)" ? vista_w() : vista_w(piezas[i]);
    };
    return toma(
        crt_makepath(ver(0, p.unidad), ver(1, p.directorio), ver(2, p.nombre), ver(3, p.extension)).suelta());
}

TEST(crt_rutas, corta_en_cuatro_trozos) {
    struct fila {
        const char* ruta;
        piezas_a trozos;
    };
    const fila filas[] = {
        {"", {"", "", "", ""}},
        {"C:\\dir\\sub\\file.txt", {"C:", "\\dir\\sub\\", "file", ".txt"}},
        {"c:/dir/file", {"c:", "/dir/", "file", ""}},
        {"C:", {"C:", "", "", ""}},
        {"C:\\", {"C:", "\\", "", ""}},
        {"C:file.txt", {"C:", "", "file", ".txt"}},
        {"1:x", {"1:", "", "x", ""}},  // any character before the colon
        {"::x", {"::", "", "x", ""}},
        {"\\:x", {"\\:", "", "x", ""}},  // a separator too
        {"ab:c", {"", "", "ab:c", ""}},  // the colon is the second character or none
        {":", {"", "", ":", ""}},
        {"\\\\srv\\share\\a.b\\c", {"", "\\\\srv\\share\\a.b\\", "c", ""}},
        {"\\\\srv", {"", "\\\\", "srv", ""}},
        {"b.tar.gz", {"", "", "b.tar", ".gz"}},  // the last point
        {".cfg", {"", "", "", ".cfg"}},
        {"name.", {"", "", "name", "."}},
        {".", {"", "", "", "."}},
        {"..", {"", "", ".", "."}},
        {"C:.", {"C:", "", "", "."}},
        {"a.b\\c", {"", "a.b\\", "c", ""}},  // a point before the last separator is directory
        {"a.b/c", {"", "a.b/", "c", ""}},
        {"a\\b/", {"", "a\\b/", "", ""}},
        {"a/b\\c.d", {"", "a/b\\", "c", ".d"}},
        {" . ", {"", "", " ", ". "}},
        {"C:\\Año\\Ñandú.ñ", {"C:", "\\Año\\", "Ñandú", ".ñ"}},
    };
    for (const fila& f : filas) {
        SCOPED_TRACE(f.ruta);
        EXPECT_EQ(corta_w(f.ruta), f.trozos);
        const trozos_de_ruta<char> t = crt_splitpath(vista_a(cp1252(f.ruta)));
        EXPECT_EQ(t.unidad.size() + t.directorio.size() + t.nombre.size() + t.extension.size(),
                  cp1252(f.ruta).size());
        const piezas_a en_bytes = corta_a(cp1252(f.ruta));
        EXPECT_EQ((piezas_a{de_cp1252(en_bytes.unidad), de_cp1252(en_bytes.directorio),
                            de_cp1252(en_bytes.nombre), de_cp1252(en_bytes.extension)}),
                  f.trozos);
        EXPECT_EQ(modelos::corta_como_el_crt(std::string(f.ruta)), f.trozos) << "the model itself";
    }
}

TEST(crt_rutas, compone_con_lo_que_falta) {
    struct fila {
        piezas_a piezas;
        const char* ruta;
    };
    const fila filas[] = {
        {{"C:", "\\dir\\", "file", ".txt"}, "C:\\dir\\file.txt"},
        {{"C", "dir", "file", "txt"}, "C:dir\\file.txt"},
        {{"Cualquiera", "", "x", ""}, "C:x"},  // the first unit of the drive
        {{"\\\\srv", "d", "x", ""}, "\\:d\\x"},
        {{"", "dir/", "file", ""}, "dir/file"},
        {{"", "dir", "", ""}, "dir\\"},
        {{"", "", "file", "."}, "file."},
        {{"", "", "file.", "txt"}, "file..txt"},
        {{"", "", "", "txt"}, ".txt"},
        {{"", "", "", ""}, ""},
        {{"(NULL)", "(NULL)", "(NULL)", "(NULL)"}, ""},
        {{"(NULL)", "\\", "\\x", "(NULL)"}, "\\\\x"},
        {{"C:", "(NULL)", "(NULL)", "(NULL)"}, "C:"},
        {{"ñ", "Año", "Ñandú", "ñ"}, "ñ:Año\\Ñandú.ñ"},
    };
    for (const fila& f : filas) {
        SCOPED_TRACE(f.ruta);
        EXPECT_EQ(compone_w(f.piezas), f.ruta);
        EXPECT_EQ(compone_a({cp1252(f.piezas.unidad), cp1252(f.piezas.directorio), cp1252(f.piezas.nombre),
                             cp1252(f.piezas.extension)}),
                  f.ruta);
    }
}

// Cutting works at compile time and on a text that stands for NULL.
TEST(crt_rutas, cortar_no_necesita_memoria) {
    static_assert(crt_splitpath(vista_w(L"C:\\a.b")).extension == L".b");
    const trozos_de_ruta<wchar_t> nada = crt_splitpath(vista_w());
    EXPECT_TRUE(nada.unidad.empty() && nada.directorio.empty() && nada.nombre.empty() &&
                nada.extension.empty());
    const texto_w ruta = L"C:\\dir\\file.txt";
    const trozos_de_ruta<wchar_t> t = crt_splitpath(vista_w(ruta));
    EXPECT_EQ(t.unidad.data(), ruta.data());
    EXPECT_EQ(t.directorio.data(), ruta.data() + 2);
    EXPECT_EQ(t.nombre.data(), ruta.data() + 7);
    EXPECT_EQ(t.extension.data(), ruta.data() + 11);
}

void compara_con_el_modelo(const std::string& ruta) {
    SCOPED_TRACE("[" + ruta + "]");
    const texto_a de_8_bits = cp1252(ruta);
    const modelos::piezas<modelos::texto_c> c = modelos::corta_como_el_crt(modelos::lee(de_8_bits));
    EXPECT_EQ(corta_a(de_8_bits), (piezas_a{modelos::escribe(c.unidad), modelos::escribe(c.directorio),
                                            modelos::escribe(c.nombre), modelos::escribe(c.extension)}));
    const modelos::piezas<texto_w> modelo = modelos::corta_como_el_crt(w(ruta));
    const piezas_a esperadas = {u8(vista_w(modelo.unidad)), u8(vista_w(modelo.directorio)),
                                u8(vista_w(modelo.nombre)), u8(vista_w(modelo.extension))};
    const piezas_a cortadas = corta_w(ruta);
    EXPECT_EQ(cortadas, esperadas);
    // What was cut joins, and composes, to what it was.
    EXPECT_EQ(cortadas.unidas(), ruta);
    EXPECT_EQ(compone_w(cortadas), ruta);
}

TEST(crt_rutas, igual_que_el_modelo_en_todo_texto_corto) {
    const std::size_t vistos =
        modelos::para_cada_texto(modelos::alfabeto, modelos::longitud_exhaustiva, compara_con_el_modelo);
    EXPECT_EQ(vistos, modelos::cuantos_textos(modelos::alfabeto.size(), modelos::longitud_exhaustiva));
}

TEST(crt_rutas, igual_que_el_modelo_en_textos_al_azar) {
    modelos::fabrica fabrica(77);
    for (int i = 0; i < 5000 && !HasFailure(); ++i) {
        compara_con_el_modelo(fabrica.texto());
    }
    for (const std::size_t longitud : {32767u, 100000u}) {
        for (const char letra : {'a', '.', '\\', ':'}) {
            compara_con_el_modelo(std::string(longitud, letra));
        }
    }
}

// Every short text cut anywhere into four pieces composes as the model does.
TEST(crt_rutas, compone_como_el_modelo) {
    modelos::para_cada_texto("a.\\/:", modelos::longitud_exhaustiva - 2, [](const std::string& t) {
        for (std::size_t a = 0; a <= t.size(); ++a) {
            for (std::size_t b = a; b <= t.size(); ++b) {
                for (std::size_t c = b; c <= t.size(); ++c) {
                    const piezas_a p = {t.substr(0, a), t.substr(a, b - a), t.substr(b, c - b), t.substr(c)};
                    const std::string esperada =
                        modelos::compone_como_el_crt(p.unidad, p.directorio, p.nombre, p.extension);
                    EXPECT_EQ(compone_a(p), esperada) << t << " " << a << " " << b << " " << c;
                    EXPECT_EQ(compone_w(p), esperada) << t << " " << a << " " << b << " " << c;
                }
            }
        }
    });
}

}  // namespace
