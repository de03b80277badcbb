// Owners, arguments, and what they cost.
#include <algorithm>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>
#include <unordered_set>

#include "hpp/apoyo.hpp"

namespace {

using hpp::prueba;
using lumodir::argumento;
using lumodir::cadena;
class base : public prueba {};

static_assert(sizeof(cadena) == sizeof(wchar_t*));
static_assert(sizeof(lumodir::lista) == sizeof(void*));
static_assert(sizeof(lumodir::registros<Fichsdir>) == sizeof(void*));
static_assert(!std::is_copy_constructible_v<cadena> && !std::is_copy_assignable_v<cadena>);
static_assert(!std::is_copy_constructible_v<lumodir::lista> && !std::is_copy_constructible_v<lumodir::arbol>);
static_assert(std::is_nothrow_move_constructible_v<cadena> && std::is_nothrow_move_assignable_v<cadena>);
static_assert(std::is_nothrow_move_constructible_v<lumodir::lista_ficheros>);

cadena nueva(const wchar_t* texto) {
    return cadena(widestr_nousar_copia(texto, "prueba", 1));
}

TEST_F(base, una_cadena_se_mueve_y_se_libera_una_vez) {
    const unsigned long long antes = lumodir::bloques_vivos();
    {
        cadena a = nueva(L"uno");
        cadena b = std::move(a);
        EXPECT_TRUE(a.empty());  // NOLINT: that is what is promised
        EXPECT_EQ(a.size(), 0u);
        EXPECT_STREQ(a.c_str(), L"");
        EXPECT_EQ(b, L"uno");
        a = nueva(L"dos");
        b = std::move(a);
        EXPECT_EQ(b, L"dos");
        EXPECT_TRUE(a.empty());                          // NOLINT
        EXPECT_EQ(lumodir::bloques_vivos(), antes + 1);  // "uno" went at once
        cadena& misma = b;
        b = std::move(misma);
        EXPECT_EQ(b.texto(), std::wstring(L"dos"));
        EXPECT_TRUE(b == nueva(L"dos"));
        EXPECT_TRUE(b != nueva(L"tres"));
        EXPECT_TRUE(b != std::wstring(L"tres"));
        EXPECT_EQ(b.ruta(), std::filesystem::path(L"dos"));
        wchar_t* suelta = b.suelta();
        EXPECT_TRUE(b.empty());
        EXPECT_EQ(lumodir::bloques_vivos(), antes + 1);  // "dos", nobody's
        widestr_nousar_destruye(&suelta, "prueba", 1);
    }
    EXPECT_EQ(lumodir::bloques_vivos(), antes);
}

// What a program writes without thinking of owners.
TEST_F(base, una_cadena_es_lo_que_haga_falta) {
    const std::wstring nombre = nueva(L"uno");
    std::wstring otro(nueva(L"otro"));
    std::filesystem::path ruta = nueva(L"dir");
    const std::filesystem::path directa(nueva(L"dir"));
    EXPECT_EQ(nombre, L"uno");
    EXPECT_EQ(otro, L"otro");
    EXPECT_EQ(ruta, directa);
    EXPECT_EQ(ruta / nueva(L"f"), std::filesystem::path(L"dir\\f"));
    ruta = nueva(L"b").ruta();
    otro = nueva(L"b");
    EXPECT_EQ(ruta, otro);
    otro += nueva(L"c");
    EXPECT_EQ(otro, L"bc");
    EXPECT_EQ(nueva(L"a") + L".txt", L"a.txt");
    EXPECT_EQ(L"x" + nueva(L"a") + std::wstring(L"y"), L"xay");
    EXPECT_EQ(nueva(L"a") + nueva(L"b"), L"ab");
    std::wostringstream salida;
    salida << nueva(L"uno") << L' ' << nueva(L"dos");
    EXPECT_EQ(salida.str(), L"uno dos");
    std::ostringstream salida_a;
    salida_a << lumodir::nomsfich::registro("A.TXT").nombre_fichero();
    EXPECT_EQ(salida_a.str(), "a.txt");
    EXPECT_TRUE(nueva(L"a") < nueva(L"b"));
    EXPECT_TRUE(nueva(L"b") > L"a" && nueva(L"b") >= L"b" && L"b" <= nueva(L"b") && L"a" < nueva(L"b"));
    EXPECT_TRUE(L"a" == nueva(L"a") && L"a" != nueva(L"b"));
    EXPECT_TRUE(nueva(L"Z") < nueva(L"a") && nueva(L"z") < nueva(L"ñ"));  // by code unit
    std::set<cadena, std::less<>> orden;
    orden.insert(nueva(L"b"));
    orden.insert(nueva(L"a"));
    orden.insert(nueva(L"b"));
    EXPECT_EQ(orden.size(), 2u);
    EXPECT_EQ(*orden.begin(), L"a");
    EXPECT_EQ(orden.count(std::wstring_view(L"b")), 1u);
    std::unordered_set<cadena> conjunto;
    conjunto.insert(nueva(L"a"));
    conjunto.insert(nueva(L"a"));
    EXPECT_EQ(conjunto.size(), 1u);
    const auto corta = [](const std::filesystem::path& p) { return p.filename().wstring().size(); };
    EXPECT_EQ(corta(nueva(L"dir\\abc")), 3u);
}

TEST_F(base, una_respuesta_es_un_bool_y_no_un_numero) {
    const bool si = lumodir::cdir::es_path_valido(L"C:\\a");
    EXPECT_TRUE(si);
    EXPECT_TRUE(!lumodir::cdir::es_path_valido(L"C:\\con") && si);
    static_assert(std::is_convertible_v<lumodir::respuesta, bool>);
    static_assert(!std::is_convertible_v<lumodir::respuesta, int>);
}

// Moved from, or never filled: it counts as the empty text everywhere.
TEST_F(base, lo_vacio_se_puede_cambiar) {
    cadena vacia;
    lumodir::suprime_barra_final_si_hay(vacia);
    EXPECT_EQ(vacia, L"");
    cadena otra;
    lumodir::cdir::cambia_extension_nombre_fichero(otra, L"txt");
    cadena de_nada = nueva(L"");
    lumodir::cdir::cambia_extension_nombre_fichero(de_nada, L"txt");
    EXPECT_EQ(otra, de_nada);
    // What is said of an empty name, once for each; nothing of NULL.
    EXPECT_EQ(toma_informes(), (std::vector<std::string>(2, "pathCorrecto == CIERTO")));
}

// The library makes U+FFFD of bytes that are no characters, and so does the path.
TEST_F(base, los_bytes_que_no_valen_son_los_mismos_a_los_dos_lados) {
    for (const std::string bytes :
         {"9:\\\x81", "9:\\a\x81z", "9:\\\x83 b\x81", "9:\\\xff\xfe", "9:\\\x8d\x90\x9d."}) {
        lumodir::lista_a lista(arr_CreaCADENA(1));
        arr_AppendCADENA(*lista.direccion(), bytes.c_str());
        const lumodir::cadena_a suya(arr_GetCopiaCADENA(lista.get(), 0));
        lumodir::cadena_a unidad, directorio, nombre, extension;
        cdir_splitpath_con_comprobacion(bytes.c_str(), unidad.direccion(), directorio.direccion(),
                                        nombre.direccion(), extension.direccion());
        const std::vector<std::wstring> avisos = toma_avisos();  // the path as the library reads it
        ASSERT_FALSE(avisos.empty());
        const std::filesystem::path ruta = suya;
        EXPECT_NE(avisos.back().find(L"'" + ruta.wstring() + L"'"), std::wstring::npos) << bytes;
        toma_informes();
    }
}

// The curly quotes are bytes 0x93 and 0x94 in all the Windows code pages of one byte, and no such characters.
TEST_F(base, una_ruta_de_8_bits_se_lee_en_la_pagina_de_codigos) {
    const lumodir::cadena_a vacia;
    EXPECT_TRUE(vacia.ruta().empty());
    const lumodir::cadena_a ascii = lumodir::nomsfich::registro("a b.txt").nombre_fichero();
    EXPECT_EQ(ascii.ruta(), std::filesystem::path(L"a b.txt"));
    if (::GetACP() < 1250 || ::GetACP() > 1258) {
        GTEST_SKIP() << "code page " << ::GetACP();
    }
    const lumodir::cadena_a con_comillas = lumodir::nomsfich::registro("\x93x\x94.txt").nombre_fichero();
    EXPECT_EQ(con_comillas.ruta(), std::filesystem::path(L"\u201Cx\u201D.txt"));
}

TEST_F(base, una_lista_da_vistas_y_copias) {
    lumodir::lista l(arr_CreaCADENA_u(0));
    EXPECT_TRUE(l.empty());
    for (const wchar_t* texto : {L"b", L"", L"ñ"}) {
        arr_AppendCADENA_u(l.get(), texto);
    }
    EXPECT_EQ(l.size(), 3u);
    EXPECT_EQ(l[2], L"ñ");
    EXPECT_EQ(l.vector(), (std::vector<std::wstring>{L"b", L"", L"ñ"}));
    EXPECT_EQ(hpp::todos(l), l.vector());
    EXPECT_TRUE(l[3].empty());
    EXPECT_EQ(toma_informes().size(), 1u);  // out of range
    lumodir::lista otra = std::move(l);
    EXPECT_EQ(l.size(), 0u);  // NOLINT
    EXPECT_TRUE(l.begin() == l.end());
    EXPECT_EQ(otra.begin()->size(), 1u);
    EXPECT_EQ(*std::next(otra.begin(), 2), L"ñ");
    otra = lumodir::lista(otra.suelta());
    EXPECT_EQ(otra.size(), 3u);
    ArrCADENA_u* suelta = otra.suelta();
    EXPECT_EQ(arr_NumElemsCADENA_u(suelta), 3u);
    arr_DestruyeCADENA_u(&suelta);
}

TEST_F(base, todas_las_clases_de_texto_entran) {
    const std::wstring texto = L"C:\\a\\ñ.txt";
    const cadena propia = nueva(texto.c_str());
    const std::filesystem::path path = texto;
    EXPECT_EQ(argumento(texto).c_str(), texto.c_str()) << "copied without need";
    EXPECT_EQ(argumento(path).c_str(), path.c_str());
    EXPECT_EQ(argumento(propia).c_str(), propia.c_str());
    const std::filesystem::directory_entry entrada(path);
    EXPECT_EQ(argumento(entrada).c_str(), entrada.path().c_str());
    EXPECT_EQ(argumento(nullptr).c_str(), nullptr);
    EXPECT_STREQ(argumento(std::wstring_view()).c_str(), L"");
    EXPECT_STREQ(argumento(std::wstring_view(texto).substr(0, 4)).c_str(), L"C:\\a")
        << "no terminator of its own";
    for (std::size_t largo : {258u, 259u, 260u, 261u, 5000u}) {
        const std::wstring linea(largo + 1, L'x');
        EXPECT_EQ(argumento(std::wstring_view(linea).substr(1)).c_str(), linea.substr(1));
    }
}

struct fila_de_coste {
    const char* que;
    unsigned long (*reservas)();
    unsigned long esperadas;
};

template <class T>
unsigned long reservas_con(const T& texto) {
    const unsigned long antes = hpp::reservas();
    EXPECT_TRUE(lumodir::cdir::path_valido(texto));
    const cadena nombre = lumodir::cdir::nombre_y_ext_fichero(texto);
    EXPECT_FALSE(nombre.vista().empty());
    return hpp::reservas() - antes;
}

TEST_F(base, no_cuesta_mas_que_la_copia_que_se_pide) {
    static const std::wstring corto = L"C:\\dir\\fichero.txt";
    static const std::wstring largo = L"C:\\" + std::wstring(200, L'a') + L"\\" + std::wstring(200, L'b');
    static const std::filesystem::path path = corto;
    const fila_de_coste filas[] = {
        {"a literal", [] { return reservas_con(L"C:\\dir\\fichero.txt"); }, 0},
        {"a wstring", [] { return reservas_con(largo); }, 0},
        {"a path", [] { return reservas_con(path); }, 0},
        {"a short view", [] { return reservas_con(std::wstring_view(corto)); }, 0},
        {"a long view, in two calls", [] { return reservas_con(std::wstring_view(largo)); }, 2},
        {"a copy that was asked for",
         [] {
             const unsigned long antes = hpp::reservas();
             (void)lumodir::cdir::nombre_base_fichero(largo).texto();
             return hpp::reservas() - antes;
         },
         1},
    };
    for (const fila_de_coste& fila : filas) {
        EXPECT_EQ(fila.reservas(), fila.esperadas) << fila.que;
    }
    // And in the library: one block for a result, none for an answer.
    const unsigned long long antes = lumodir::bloques_vivos();
    const cadena una = lumodir::cdir::nombre_base_fichero(corto);
    EXPECT_EQ(lumodir::bloques_vivos(), antes + 1);
}

// Every function of the headers is called by some test: a text search, which a new function fails until it has one.
TEST_F(base, toda_funcion_se_prueba) {
    std::string pruebas;
    for (const auto& entrada : std::filesystem::directory_iterator(L"" LUMODIR_RAIZ "/tests/hpp")) {
        std::ifstream fichero(entrada.path());
        pruebas.append(std::istreambuf_iterator<char>(fichero), std::istreambuf_iterator<char>());
    }
    const std::regex declaracion("\n(?:inline|con_progreso<)[^;={]*?[ &>*](\\w+)\\(");
    unsigned funciones = 0;
    for (const auto& entrada : std::filesystem::directory_iterator(L"" LUMODIR_RAIZ "/include/cpp")) {
        std::ifstream fichero(entrada.path());
        std::string texto((std::istreambuf_iterator<char>(fichero)), std::istreambuf_iterator<char>());
        texto.erase(std::remove(texto.begin(), texto.end(), '\r'), texto.end());
        // Without what is nobody's business. Not by a regular expression: over so long a text it takes all the stack.
        const std::string principio = "namespace detalle {";
        const std::string su_final = "}  // namespace detalle";
        for (std::size_t i = texto.find(principio); i != std::string::npos; i = texto.find(principio)) {
            const std::size_t fin = texto.find(su_final, i);
            ASSERT_NE(fin, std::string::npos) << entrada.path().filename();
            texto.erase(i, fin + su_final.size() - i);
        }
        for (std::sregex_iterator i(texto.begin(), texto.end(), declaracion), fin; i != fin; ++i) {
            ++funciones;
            EXPECT_NE(pruebas.find("::" + (*i)[1].str() + "("), std::string::npos)
                << (*i)[1] << " of " << entrada.path().filename() << " is called by no test";
        }
    }
    EXPECT_GT(funciones, 130u);
}

}  // namespace
