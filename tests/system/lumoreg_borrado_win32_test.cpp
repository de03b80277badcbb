// Deleting a key touches nothing that was not named: links, views, roots, names that are none, and depth. The real
// registry where it can show it, a false one behind the table elsewhere.
#include <array>
#include <cstring>

#include "apoyo/como_windows.hpp"
#include "lumoreg.h"
#include "registro_de_pruebas.hpp"

using namespace apoyo;
using namespace interno;

namespace {

using borrado_lumoreg = con_registro;
using textos = std::vector<std::string>;

void borra(bool ancha, std::string_view padre, std::string_view nombre) {
    if (ancha) {
        lumoreg_borra_clave_u(raiz_de_pruebas, bajo(padre).c_str(), w(nombre).c_str());
    } else {
        lumoreg_borra_clave(raiz_de_pruebas, bajo_a(padre).c_str(), cp1252(nombre).c_str());
    }
}

texto_w nombre_de_sistema(const texto_w& ruta) {
    const HKEY clave = abre(ruta.c_str());
    const texto_w nombre = nombre_de_clave(clave);
    ::RegCloseKey(clave);
    EXPECT_FALSE(nombre.empty());
    return nombre;
}

// The link itself, whatever it points to.
bool existe_enlace(const texto_w& ruta) {
    HKEY clave = nullptr;
    ::RegOpenKeyExW(HKEY_CURRENT_USER, ruta.c_str(), REG_OPTION_OPEN_LINK, KEY_QUERY_VALUE, &clave);
    ::RegCloseKey(clave);
    return clave != nullptr;
}
// What nobody names: everything in it must be there afterwards.
void crea_precioso() {
    crea(bajo("precious\\a\\deep"));
    crea(bajo("precious\\b"));
    pon(bajo("precious"), L"v", REG_SZ, texto_w(L"text"));
}
void espera_precioso() {
    EXPECT_EQ(subclaves(bajo("precious")), (textos{"a", "b"}));
    EXPECT_TRUE(existe(bajo("precious\\a\\deep")));
    EXPECT_TRUE(lee(bajo("precious"), L"v").existe);
}

tabla_sistema g_real;

}  // namespace

TEST_F(borrado_lumoreg, un_enlace_se_borra_y_lo_que_apunta_queda) {
    const struct {
        const char* que;
        const char* enlace;
        const char* destino;
        const char* padre;
        const char* nombre;
    } filas[] = {
        {"below the key", "p\\top\\link", "precious", "p", "top"},
        {"deep below it", "p\\top\\s\\t\\a\u00F1o", "precious", "p", "top"},
        {"the key itself", "p\\link", "precious", "p", "link"},
        {"the key itself, without a name", "p\\link", "precious", "p\\link", ""},
        {"to the key that holds it", "p\\top\\link", "p\\top", "p", "top"},
        {"to a key above", "p\\top\\l", "p", "p", "top"},
        {"to itself", "p\\top\\l", "p\\top\\l", "p", "top"},
        {"to nothing", "p\\top\\l", "nothing", "p", "top"},
        {"the key itself, to nothing", "p\\link", "nothing", "p", "link"},
    };
    for (const auto& f : filas) {
        for (const bool ancha : {true, false}) {
            SCOPED_TRACE(testing::Message() << f.que << (ancha ? ", wide" : ", 8-bit"));
            crea_precioso();
            crea(bajo("p"));
            const texto_w destino = nombre_de_sistema(clave_de_pruebas) + w("\\") + w(f.destino);
            crea_enlace(HKEY_CURRENT_USER, bajo(f.enlace), destino);
            borra(ancha, f.padre, f.nombre);
            EXPECT_EQ(toma_informes_con_detalle(), textos{});
            EXPECT_FALSE(existe_enlace(bajo(f.enlace)));
            EXPECT_EQ(subclaves(bajo("p")), textos{});
            espera_precioso();
            borra_arbol(bajo("p"));
        }
    }
}

// What the caller passes on the way to the parent is followed, as everybody follows it.
TEST_F(borrado_lumoreg, un_enlace_en_el_camino_al_padre_se_sigue) {
    for (const bool ancha : {true, false}) {
        crea_precioso();
        crea(bajo("p"));
        crea_enlace(HKEY_CURRENT_USER, bajo("p\\way"), nombre_de_sistema(bajo("precious")));
        borra(ancha, "p\\way", "a");
        EXPECT_EQ(subclaves(bajo("precious")), textos{"b"}) << ancha;
        EXPECT_TRUE(existe_enlace(bajo("p\\way"))) << ancha;
        borra_arbol(bajo("p"));
        borra_arbol(bajo("precious"));
    }
}

TEST_F(borrado_lumoreg, un_enlace_que_no_se_deja_borrar_se_informa_y_su_destino_queda) {
    for (const bool ancha : {true, false}) {
        crea_precioso();
        crea(bajo("p\\top"));
        crea_enlace(HKEY_CURRENT_USER, bajo("p\\top\\link"), nombre_de_sistema(bajo("precious")));
        {
            const sustituye no(
                sistema.NtDeleteKey,
                +[](HANDLE) -> LONG { return static_cast<LONG>(0xC0000022); });  // access denied
            borra(ancha, "p", "top");
        }
        ESPERA_DETALLES("resultado == ERROR_SUCCESS [link]", "resultado == ERROR_SUCCESS [top]");
        EXPECT_TRUE(existe_enlace(bajo("p\\top\\link")));
        espera_precioso();
        borra_arbol(bajo("p"));
    }
}

namespace {

texto_w g_cambiada;
texto_w g_destino;
// Between the listing of a key and its opening somebody puts a link in its place.
LSTATUS WINAPI enumera_y_cambia(HKEY clave, DWORD indice, wchar_t* nombre, DWORD* longitud, DWORD* r,
                                wchar_t* c, DWORD* lc, FILETIME* f) {
    const LSTATUS error = g_real.RegEnumKeyExW(clave, indice, nombre, longitud, r, c, lc, f);
    if (error == ERROR_SUCCESS && u8(nombre) == "victim") {
        borra_arbol(g_cambiada);
        crea_enlace(HKEY_CURRENT_USER, g_cambiada, g_destino);
    }
    return error;
}

}  // namespace

TEST_F(borrado_lumoreg, quien_pone_un_enlace_a_media_pasada_no_gana_nada) {
    for (const bool ancha : {true, false}) {
        crea_precioso();
        crea(bajo("p\\top\\victim\\x"));
        g_cambiada = bajo("p\\top\\victim");
        g_destino = nombre_de_sistema(bajo("precious"));
        g_real = sistema;
        const sustituye e(sistema.RegEnumKeyExW, enumera_y_cambia);
        borra(ancha, "p", "top");
        EXPECT_EQ(toma_informes_con_detalle(), textos{});
        EXPECT_FALSE(existe_enlace(g_cambiada));
        EXPECT_FALSE(existe(bajo("p\\top")));
        espera_precioso();
        borra_arbol(bajo("p"));
    }
}

// ---- Roots and names

TEST_F(borrado_lumoreg, una_clave_justo_debajo_de_la_raiz_se_borra_con_lo_suyo) {
    const std::string nombre = "lumodir-pruebas-\u00F1-" + std::to_string(::GetCurrentProcessId());
    for (const bool ancha : {true, false}) {
        crea(w(nombre + "\\sub\\deep"));
        if (ancha) {
            lumoreg_borra_clave_u(raiz_de_pruebas, L"", w(nombre).c_str());
        } else {
            lumoreg_borra_clave(raiz_de_pruebas, "", cp1252(nombre).c_str());
        }
        EXPECT_EQ(toma_informes_con_detalle(), textos{}) << ancha;
        EXPECT_FALSE(existe(w(nombre))) << ancha;
        borra_arbol(w(nombre));
    }
    lumoreg_borra_clave_u(raiz_de_pruebas, L"", w(nombre).c_str());
    ESPERA_DETALLES("clave_abierta == CIERTO [" + nombre + "]",
                    "resultado == ERROR_SUCCESS [" + nombre + "]");
}

TEST_F(borrado_lumoreg, separadores_solos_no_nombran_nada_debajo_de_una_raiz) {
    const struct {
        const wchar_t* padre;
        const wchar_t* nombre;
    } filas[] = {{L"", L""}, {L"", L"\\"}, {L"\\", L""}, {L"\\", L"\\\\"}};
    for (const auto& f : filas) {
        // A root that opens under any of these names, as one of them does.
        const sustituye abre_todo(
            sistema.RegOpenKeyExW, +[](HKEY raiz, const wchar_t*, DWORD, REGSAM, HKEY* clave) -> LSTATUS {
                *clave = raiz;
                return ERROR_SUCCESS;
            });
        const sustituye borrar(
            sistema.NtDeleteKey, +[](HANDLE) -> LONG {
                ADD_FAILURE() << "deletes";
                return 0;
            });
        const sustituye mirar(
            sistema.RegEnumKeyExW,
            +[](HKEY, DWORD, wchar_t*, DWORD*, DWORD*, wchar_t*, DWORD*, FILETIME*) -> LSTATUS {
                ADD_FAILURE() << "looks below";
                return ERROR_NO_MORE_ITEMS;
            });
        lumoreg_borra_clave_u(raiz_de_pruebas, f.padre, f.nombre);
        lumoreg_borra_clave(raiz_de_pruebas, cp1252(u8(f.padre)).c_str(), cp1252(u8(f.nombre)).c_str());
        const std::string informe = "widestr_longitud(clave) > 0 || widestr_longitud(nombre) > 0";
        ESPERA_DETALLES(informe, informe);
    }
}

// ---- A false registry: what is opened from where, in which view, and what is deleted

namespace {

struct clave_fingida {
    std::vector<std::pair<texto_w, clave_fingida*>> hijas;  // names may hold anything
    LSTATUS niega = ERROR_SUCCESS;                          // what opening it for everything answers
    bool mal_contada = false;  // its name is listed without an end, whatever room there is
    bool borrada = false;
};

class registro_fingido {
public:
    // `vistas[v]`: what the path of the parent opens in the process's own view, the 64-bit and the 32-bit one.
    std::array<std::pair<LSTATUS, clave_fingida*>, 3> vistas;
    std::vector<std::string> llamadas;

    registro_fingido() : antes_(sistema) {
        i_yo() = this;
        sistema.RegOpenKeyExW = i_abre;
        sistema.RegEnumKeyExW = i_enumera;
        sistema.NtDeleteKey = i_borra;
        sistema.RegCloseKey = +[](HKEY) -> LSTATUS { return --i_yo()->abiertas_, ERROR_SUCCESS; };
    }
    ~registro_fingido() {
        sistema = antes_;
        EXPECT_EQ(abiertas_, 0) << "keys left open";
    }
    registro_fingido(const registro_fingido&) = delete;
    registro_fingido& operator=(const registro_fingido&) = delete;

private:
    static registro_fingido*& i_yo() {
        static registro_fingido* yo = nullptr;
        return yo;
    }
    static std::size_t i_vista(REGSAM acceso) {
        return (acceso & KEY_WOW64_64KEY) != 0 ? 1 : (acceso & KEY_WOW64_32KEY) != 0 ? 2 : 0;
    }
    static LSTATUS i_da(LSTATUS error, clave_fingida* cual, HKEY* clave) {
        i_yo()->abiertas_ += error == ERROR_SUCCESS ? 1 : 0;
        *clave = reinterpret_cast<HKEY>(cual);  // what a failure leaves there is nobody's
        return error;
    }
    static LSTATUS WINAPI i_abre(HKEY desde, const wchar_t* ruta, DWORD opciones, REGSAM acceso,
                                 HKEY* clave) {
        const bool raiz = desde == HKEY_LOCAL_MACHINE;
        EXPECT_TRUE(opciones == REG_OPTION_OPEN_LINK || opciones == 0) << opciones;
        const char* const vistas[] = {"", " 64", " 32"};
        i_yo()->llamadas.push_back((raiz ? "root " : "below ") + u8(ruta) + vistas[i_vista(acceso)] +
                                   (opciones == REG_OPTION_OPEN_LINK ? " itself" : ""));
        if (raiz) {
            const auto& [error, cual] = i_yo()->vistas[i_vista(acceso)];
            return i_da(error, cual, clave);
        }
        for (const auto& [nombre, hija] : reinterpret_cast<clave_fingida*>(desde)->hijas) {
            if (nombre == ruta && !hija->borrada) {
                const REGSAM derechos = acceso & ~REGSAM{KEY_WOW64_64KEY | KEY_WOW64_32KEY};
                const bool todo = derechos == KEY_ALL_ACCESS;
                EXPECT_TRUE(todo || derechos == DELETE) << derechos;
                return i_da(todo ? hija->niega : ERROR_SUCCESS, hija, clave);
            }
        }
        return ERROR_FILE_NOT_FOUND;
    }
    static LSTATUS WINAPI i_enumera(HKEY clave, DWORD indice, wchar_t* nombre, DWORD* longitud, DWORD*,
                                    wchar_t*, DWORD*, FILETIME*) {
        for (const auto& [texto, hija] : reinterpret_cast<clave_fingida*>(clave)->hijas) {
            if (!hija->borrada && indice-- == 0) {
                if (hija->mal_contada) {
                    std::copy_n(texto.data(), std::min<std::size_t>(texto.size(), *longitud), nombre);
                    *longitud = static_cast<DWORD>(texto.size());
                    return ERROR_SUCCESS;
                }
                if (texto.size() >= *longitud) {
                    return ERROR_MORE_DATA;
                }
                std::memcpy(nombre, texto.c_str(), (texto.size() + 1) * sizeof(wchar_t));
                *longitud = static_cast<DWORD>(texto.size());
                return ERROR_SUCCESS;
            }
        }
        return ERROR_NO_MORE_ITEMS;
    }
    static LONG NTAPI i_borra(HANDLE clave) {
        auto* k = static_cast<clave_fingida*>(clave);
        for (const auto& [nombre, hija] : k->hijas) {
            if (!hija->borrada) {
                return static_cast<LONG>(0xC0000121);  // cannot delete
            }
        }
        k->borrada = true;
        return 0;
    }

    tabla_sistema antes_;
    long abiertas_ = 0;
};

constexpr unsigned long local_machine = 3;  // HKEY_LOCAL_MACHINE

}  // namespace

TEST_F(borrado_lumoreg, una_sola_vista_y_otra_solo_si_la_clave_no_esta) {
    constexpr LSTATUS bien = ERROR_SUCCESS;
    constexpr LSTATUS falta = ERROR_FILE_NOT_FOUND;
    constexpr LSTATUS no = ERROR_ACCESS_DENIED;
    const struct {
        const char* que;
        LSTATUS padre[3];
        LSTATUS hija;
        textos llamadas;
        textos informes;
        int borradas_de;  // the view whose keys go; -1 for none
    } filas[] = {
        {"the process's own",
         {bien, bien, bien},
         bien,
         {"root P", "below A itself", "below B itself"},
         {},
         0},
        {"missing there",
         {falta, bien, bien},
         bien,
         {"root P", "root P 64", "below A 64 itself", "below B 64 itself"},
         {},
         1},
        {"missing twice",
         {falta, falta, bien},
         bien,
         {"root P", "root P 64", "root P 32", "below A 32 itself", "below B 32 itself"},
         {},
         2},
        {"missing in all", {falta, falta, falta}, bien, {"root P", "root P 64", "root P 32"}, {}, -1},
        {"no right to the parent", {no, bien, bien}, bien, {"root P"}, {}, -1},
        {"no right in the second view", {falta, no, bien}, bien, {"root P", "root P 64"}, {}, -1},
        {"a path that is none", {ERROR_BAD_PATHNAME, bien, bien}, bien, {"root P"}, {}, -1},
        // Nothing is looked for in other views; whoever may delete it may do so while it is empty.
        {"no right to the key",
         {bien, bien, bien},
         no,
         {"root P", "below A itself", "below A itself"},
         {"clave_abierta == CIERTO [P\\A]", "resultado == ERROR_SUCCESS [A]"},
         -1},
    };
    for (const auto& f : filas) {
        for (const bool ancha : {true, false}) {
            SCOPED_TRACE(testing::Message() << f.que << (ancha ? ", wide" : ", 8-bit"));
            clave_fingida b[3];
            clave_fingida a[3];
            clave_fingida p[3];
            registro_fingido fingido;
            for (std::size_t v = 0; v < 3; ++v) {
                a[v].hijas = {{L"B", &b[v]}};
                a[v].niega = f.hija;
                p[v].hijas = {{L"A", &a[v]}};
                fingido.vistas[v] = {f.padre[v], &p[v]};
            }
            if (ancha) {
                lumoreg_borra_clave_u(local_machine, L"P", L"A");
            } else {
                lumoreg_borra_clave(local_machine, "P", "A");
            }
            EXPECT_EQ(fingido.llamadas, f.llamadas);
            EXPECT_EQ(toma_informes_con_detalle(), f.informes);
            for (int v = 0; v < 3; ++v) {
                EXPECT_EQ(a[v].borrada, v == f.borradas_de) << v;
                EXPECT_EQ(b[v].borrada, v == f.borradas_de) << v;
                EXPECT_FALSE(p[v].borrada) << v;
            }
        }
    }
}

TEST_F(borrado_lumoreg, sin_nombre_se_borra_la_propia_clave_y_nada_se_abre_dos_veces) {
    clave_fingida hija;
    clave_fingida clave;
    clave.hijas = {{L"x", &hija}};
    registro_fingido fingido;
    fingido.vistas[0] = {ERROR_SUCCESS, &clave};
    lumoreg_borra_clave_u(local_machine, L"P", L"");
    EXPECT_EQ(fingido.llamadas, (textos{"root P itself", "below x itself"}));
    EXPECT_TRUE(clave.borrada && hija.borrada);
}

TEST_F(borrado_lumoreg, una_subclave_que_solo_se_deja_borrar_se_borra_si_esta_vacia) {
    for (const std::size_t vista : {0u, 1u, 2u}) {
        clave_fingida hija;
        hija.niega = ERROR_ACCESS_DENIED;
        clave_fingida clave;
        clave.hijas = {{L"x", &hija}};
        clave_fingida padre;
        padre.hijas = {{L"k", &clave}};
        registro_fingido fingido;
        fingido.vistas.fill({ERROR_FILE_NOT_FOUND, nullptr});
        fingido.vistas[vista] = {ERROR_SUCCESS, &padre};
        lumoreg_borra_clave_u(local_machine, L"P", L"k");
        ESPERA_DETALLES("clave_abierta == CIERTO [P\\k\\x]");
        EXPECT_TRUE(hija.borrada && clave.borrada) << vista;
        EXPECT_FALSE(padre.borrada) << vista;
    }
}

// The system lists such names; the calls by name would take them for other keys, or for the level itself without end.
TEST_F(borrado_lumoreg, un_nombre_que_no_se_puede_abrir_se_informa_y_no_se_toca_otro) {
    const struct {
        texto_w nombre;
        const char* visible;
    } filas[] = {{texto_w(L"ab\0cd", 5), "ab"}, {texto_w(L"\0hidden", 7), ""}, {texto_w(), ""}};
    for (const auto& f : filas) {
        clave_fingida rara;
        clave_fingida clave;
        clave.hijas = {{f.nombre, &rara}};
        clave_fingida padre;
        padre.hijas = {{L"k", &clave}};
        registro_fingido fingido;
        fingido.vistas[0] = {ERROR_SUCCESS, &padre};
        lumoreg_borra_clave_u(local_machine, L"P", L"k");
        ESPERA_DETALLES(std::string("clave_abierta == CIERTO [P\\k\\") + f.visible + "]",
                        std::string("resultado == ERROR_SUCCESS [") + f.visible + "]",
                        "resultado == ERROR_SUCCESS [k]");
        EXPECT_EQ(fingido.llamadas, (textos{"root P", "below k itself"}));
        EXPECT_FALSE(rara.borrada);
        EXPECT_FALSE(clave.borrada);
    }
}

TEST_F(borrado_lumoreg, un_nombre_sin_fin_se_corta_a_lo_que_cabe) {
    clave_fingida rara;
    rara.mal_contada = true;
    clave_fingida clave;
    clave.hijas = {{texto_w(4000, L'a'), &rara}};
    clave_fingida padre;
    padre.hijas = {{L"k", &clave}};
    registro_fingido fingido;
    fingido.vistas[0] = {ERROR_SUCCESS, &padre};
    lumoreg_borra_clave_u(local_machine, L"P", L"k");
    const std::string cortado(99, 'a');
    ESPERA_DETALLES("clave_abierta == CIERTO [P\\k\\" + cortado + "]",
                    "resultado == ERROR_SUCCESS [" + cortado + "]", "resultado == ERROR_SUCCESS [k]");
    EXPECT_EQ(fingido.llamadas, (textos{"root P", "below k itself", "below " + cortado + " itself",
                                        "below " + cortado + " itself"}));
}

// Far deeper than any registry: what a level costs is not the stack.
TEST_F(borrado_lumoreg, la_profundidad_no_gasta_la_pila) {
    constexpr std::size_t niveles = 200'000;
    std::vector<clave_fingida> cadena(niveles);
    for (std::size_t i = 0; i + 1 < niveles; ++i) {
        cadena[i].hijas = {{L"s", &cadena[i + 1]}};
    }
    registro_fingido fingido;
    fingido.vistas[0] = {ERROR_SUCCESS, &cadena[0]};
    lumoreg_borra_clave_u(local_machine, L"P", L"s");
    EXPECT_FALSE(cadena[0].borrada);
    for (std::size_t i = 1; i < niveles; ++i) {
        ASSERT_TRUE(cadena[i].borrada) << i;
    }
    EXPECT_EQ(fingido.llamadas.size(), niveles);
}
