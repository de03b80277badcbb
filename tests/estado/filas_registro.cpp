// The rows of the registry: each under one key of the user's, which is empty when a sequence begins.
#include <algorithm>
#include <cstring>

#include "companions/plataforma.hpp"
#include "estado/filas.hpp"
#include "estado/llamadas.hpp"
#include "lumoreg.h"
#include "modelos/multicadena.hpp"

namespace estado {

using namespace apoyo;

namespace {

const texto_w base = L"Software\\lumodir-estado";

std::string bytes_de(const texto_w& t) {
    return std::string(reinterpret_cast<const char*>(t.data()), t.size() * sizeof(wchar_t));
}
texto_w texto_de(const std::string& bytes) {
    texto_w t(bytes.size() / sizeof(wchar_t), L' ');
    std::memcpy(t.data(), bytes.data(), t.size() * sizeof(wchar_t));
    return t;
}
template <class T>
T hasta_el_nulo(const T& t) {
    return t.substr(0, std::min(t.size(), t.find(typename T::value_type(0))));
}

// ---- what the calls are about

texto_w una_clave(generador& g) {
    static const std::vector<texto_w> nombres = {L"k1", L"k2", L"k3", L"k4", L"con blanco", w("\xC3\xB1")};
    texto_w t = base;
    for (std::size_t n = g.z.menor_que(4); n > 0; --n) {
        t += L"\\" + (g.z.uno_de_cada(25) ? texto_w(120, L'x') : g.z.elige(nombres));
    }
    return g.z.uno_de_cada(8) ? pliega(t) : t;
}
texto_w un_valor(generador& g) {
    static const std::vector<texto_w> nombres = {L"v1", L"v2", L"V1", L"", w("valor \xC3\xB1")};
    return g.z.elige(nombres);
}
texto_w un_dato(generador& g) {
    static const std::vector<texto_w> datos = {L"", L"hola",
                                               w("\xC3\xB1"
                                                 "and\xC3\xBA"),
                                               L"a b", texto_w(300, L'z')};
    return g.z.elige(datos);
}
texto_w la_raiz(generador&) {
    return L"2";
}
argumentos solo_clave(generador& g) {
    return {la_raiz(g), una_clave(g)};
}
argumentos vista_y_clave(generador& g) {
    return {numero(static_cast<long long>(g.z.menor_que(3))), la_raiz(g), una_clave(g)};
}
argumentos clave_y_valor(generador& g) {
    return {la_raiz(g), una_clave(g), un_valor(g)};
}
argumentos clave_valor_y_dato(generador& g) {
    return {la_raiz(g), una_clave(g), un_valor(g), un_dato(g)};
}

// ---- the model

clave* abierta(reglas& r, const argumento& camino) {
    return r.registro.busca(*camino);
}
std::string establece(reglas& r, const argumento& camino, const argumento& nombre, unsigned long tipo,
                      const std::string& bytes) {
    clave* c = abierta(r, camino);
    if (c == nullptr) {
        return "0";
    }
    valor_de_clave& v = c->valores[pliega(*nombre)];
    v.nombre = v.nombre.empty() ? *nombre : v.nombre;
    v.tipo = tipo;
    v.bytes = bytes;
    return "1";
}
std::string texto_leido(const valor_de_clave& v, bool en_8) {
    const bool es_texto = v.tipo == REG_SZ || v.tipo == REG_EXPAND_SZ || v.tipo == REG_MULTI_SZ;
    if (!en_8) {
        return u(hasta_el_nulo(texto_de(v.bytes)));
    }
    return u(de_pagina(hasta_el_nulo(es_texto ? a_pagina(texto_de(v.bytes)) : v.bytes)));
}
std::string modela_lectura(reglas& r, const argumento& camino, const argumento& nombre) {
    clave* c = abierta(r, camino);
    if (c == nullptr || c->valores.count(pliega(*nombre)) == 0) {
        return "0 (untouched)";
    }
    return "1 " + texto_leido(c->valores[pliega(*nombre)], modela_en_8_bits());
}
std::string modela_subclaves(reglas& r, const argumento& camino) {
    clave* c = abierta(r, camino);
    std::vector<std::string> v = {"before"};
    if (c != nullptr) {
        for (const auto& [plegado, hija] : c->hijas) {
            v.push_back(u(modela_en_8_bits() ? de_pagina(a_pagina(hija.nombre)) : hija.nombre));
        }
    }
    return (v.size() > 1 ? "1 " : "0 ") + entre_barras(v);
}

// One pass over a key: every second subkey stays, since the next index follows the one that has moved up.
void vacia(reglas& r, clave& c, const texto_w& camino) {
    for (std::size_t i = 0; i < c.hijas.size(); ++i) {
        auto hija = c.hijas.begin();
        std::advance(hija, static_cast<std::ptrdiff_t>(i));
        if (hija->second.nombre.size() > 99) {
            continue;
        }
        vacia(r, hija->second, camino + L"\\" + hija->second.nombre);
        if (hija->second.hijas.empty()) {
            c.hijas.erase(hija);
        } else {
            r.informe("resultado == ERROR_SUCCESS", u(hija->second.nombre));
        }
    }
}

constexpr wchar_t sin_tocar[] = L"(untouched)";
char intacto_8[] = "(untouched)";

template <auto F, class... C>
std::string lee(const argumentos& a) {
    wchar_t* texto = const_cast<wchar_t*>(sin_tocar);
    return [&]<std::size_t... I>(std::index_sequence<I...>) {
        const unsigned short r = F(convierte<C>(a[I])..., &texto);
        return std::to_string(r) + " " + (texto == sin_tocar ? "(untouched)" : toma(texto));
    }
    (std::index_sequence_for<C...>());
}
template <auto F, class... C>
std::string subclaves(const argumentos& a) {
    ArrCADENA_u* l = arr_CreaCADENA_u(0);
    arr_AppendCADENA_u(l, L"before");
    return [&]<std::size_t... I>(std::index_sequence<I...>) {
        const unsigned short r = F(convierte<C>(a[I])..., l);
        return std::to_string(r) + " " + muestra(l);
    }
    (std::index_sequence_for<C...>());
}
using ul = unsigned long;

// Made when it is first asked for: a child process plays its part before other objects are.
const std::vector<fila>& todas_las_del_registro() {
    static const std::vector<fila> todas = {
        {"pon_valor", 8,
         [](generador& g) -> argumentos {
             static const std::vector<texto_w> datos = {L"a|b||", L"|a||", L"a||b||",       L"a",
                                                        L"",      L"ab|c", L"uno|dos|tres|"};
             static const std::vector<long long> tipos = {REG_SZ, REG_MULTI_SZ, REG_MULTI_SZ, REG_BINARY,
                                                          REG_EXPAND_SZ};
             return {una_clave(g), un_valor(g), numero(g.z.elige(tipos)), g.z.elige(datos)};
         },
         [](const argumentos& a) -> std::string {
             texto_w dato = *a[3];
             std::replace(dato.begin(), dato.end(), L'|', L'\0');
             const std::size_t largo = dato.size();
             dato += L'.';  // the system counts a terminator that follows the text in memory
             HKEY c = nullptr;
             ::RegOpenKeyExW(HKEY_CURRENT_USER, a[0]->c_str(), 0, KEY_ALL_ACCESS, &c);
             ::RegSetValueExW(c, a[1]->c_str(), 0, static_cast<DWORD>(entero(a[2])),
                              reinterpret_cast<const BYTE*>(dato.data()), static_cast<DWORD>(largo * 2));
             ::RegCloseKey(c);
             return "";
         },
         nullptr,
         [](reglas& r, const argumentos& a, const std::string&) -> std::string {
             texto_w dato = *a[3];
             std::replace(dato.begin(), dato.end(), L'|', L'\0');
             establece(r, a[0], a[1], static_cast<unsigned long>(entero(a[2])), bytes_de(dato));
             return "";
         },
         [](reglas& r, const argumentos& a) { return abierta(r, a[0]) != nullptr; }},
        {"lumoreg_crea_clave", 25, solo_clave, simple<lumoreg_crea_clave_u>, nullptr,
         [](reglas& r, const argumentos& a, const std::string&) -> std::string {
             r.registro.crea(*a[1]);
             return "1";
         },
         nullptr},
        {"lumoreg_crea_clave_en_vista", 8, vista_y_clave, simple<lumoreg_crea_clave_en_vista_u>, nullptr,
         [](reglas& r, const argumentos& a, const std::string&) -> std::string {
             r.registro.crea(*a[2]);
             return "1";
         },
         nullptr},
        {"lumoreg_existe_clave", 8, solo_clave, simple<lumoreg_existe_clave_u>, simple<lumoreg_existe_clave>,
         [](reglas& r, const argumentos& a, const std::string&) -> std::string {
             return abierta(r, a[1]) != nullptr ? "1" : "0";
         },
         nullptr},
        {"lumoreg_existe_clave_en_vista", 4, vista_y_clave, simple<lumoreg_existe_clave_en_vista_u>, nullptr,
         [](reglas& r, const argumentos& a, const std::string&) -> std::string {
             return abierta(r, a[2]) != nullptr ? "1" : "0";
         },
         nullptr},
        {"lumoreg_borra_clave", 10,
         [](generador& g) -> argumentos {
             const texto_w t = una_clave(g);
             const std::size_t k = t.rfind(L'\\');
             return {la_raiz(g), t.substr(0, k), t.substr(k + 1)};
         },
         simple<lumoreg_borra_clave_u>, simple<lumoreg_borra_clave>,
         [](reglas& r, const argumentos& a, const std::string&) -> std::string {
             clave* padre = abierta(r, a[1]);
             if (padre == nullptr) {
                 return "(void)";
             }
             const texto_w camino = *a[1] + L"\\" + *a[2];
             clave* c = padre->busca(*a[2]);
             if (c == nullptr) {
                 r.informe("clave_abierta == CIERTO", u(camino));
             } else {
                 vacia(r, *c, camino);
             }
             if (c == nullptr || !c->hijas.empty()) {
                 r.informe("resultado == ERROR_SUCCESS", u(*a[2]));
             } else {
                 padre->hijas.erase(pliega(*a[2]));
             }
             return "(void)";
         },
         // The key of the sequences is not to go: the tree that is looked at begins there.
         [](reglas&, const argumentos& a) { return pliega(*a[1]) != pliega(L"Software"); }},
        {"lumoreg_borra_valor_clave", 5, clave_y_valor, simple<lumoreg_borra_valor_clave_u>, nullptr,
         [](reglas& r, const argumentos& a, const std::string&) -> std::string {
             clave* c = abierta(r, a[1]);
             if (c != nullptr && c->valores.erase(pliega(*a[2])) == 0) {
                 r.informe("error == ERROR_SUCCESS", u(*a[1]));
             }
             return "(void)";
         },
         nullptr},
        {"lumoreg_establece_cadena", 8, clave_valor_y_dato, simple<lumoreg_establece_cadena_u>, nullptr,
         [](reglas& r, const argumentos& a, const std::string&) {
             return establece(r, a[1], a[2], REG_SZ, bytes_de(*a[3] + texto_w(1, 0)));
         },
         nullptr},
        {"lumoreg_establece_cadena_en_vista", 4,
         [](generador& g) -> argumentos {
             return {numero(static_cast<long long>(g.z.menor_que(3))), la_raiz(g), una_clave(g), un_valor(g),
                     un_dato(g)};
         },
         simple<lumoreg_establece_cadena_en_vista_u>, nullptr,
         [](reglas& r, const argumentos& a, const std::string&) {
             return establece(r, a[2], a[3], REG_SZ, bytes_de(*a[4] + texto_w(1, 0)));
         },
         nullptr},
        {"lumoreg_establece_cadena_expand", 4, clave_valor_y_dato, simple<lumoreg_establece_cadena_expand_u>,
         nullptr,
         [](reglas& r, const argumentos& a, const std::string&) {
             return establece(r, a[1], a[2], REG_EXPAND_SZ, bytes_de(*a[3] + texto_w(1, 0)));
         },
         nullptr},
        {"lumoreg_establece_ulong", 5,
         [](generador& g) -> argumentos {
             static const std::vector<long long> numeros = {0, 65, 0x42004100, 0x00FF0041, 4294967295};
             return {la_raiz(g), una_clave(g), un_valor(g), numero(g.z.elige(numeros))};
         },
         simple<lumoreg_establece_ulong_u>, simple<lumoreg_establece_ulong>,
         [](reglas& r, const argumentos& a, const std::string&) {
             const auto n = static_cast<unsigned long>(entero(a[3]));
             return establece(r, a[1], a[2], REG_DWORD, std::string(reinterpret_cast<const char*>(&n), 4));
         },
         nullptr},
        {"lumoreg_lee_cadena", 10, clave_y_valor,
         lee<lumoreg_lee_cadena_u, ul, const wchar_t*, const wchar_t*>,
         [](const argumentos& a) -> std::string {
             char* texto = intacto_8;
             const unsigned short r = lumoreg_lee_cadena(2, estrecho(a[1]), estrecho(a[2]), &texto);
             return std::to_string(r) + " " + (texto == intacto_8 ? "(untouched)" : muestra(texto));
         },
         [](reglas& r, const argumentos& a, const std::string&) { return modela_lectura(r, a[1], a[2]); },
         nullptr},
        {"lumoreg_lee_cadena_ex", 4,
         [](generador& g) -> argumentos {
             return {numero(static_cast<long long>(g.z.menor_que(3))), la_raiz(g), una_clave(g), un_valor(g)};
         },
         lee<lumoreg_lee_cadena_ex_u, ul, ul, const wchar_t*, const wchar_t*>, nullptr,
         [](reglas& r, const argumentos& a, const std::string&) { return modela_lectura(r, a[2], a[3]); },
         nullptr},
        {"lumoreg_dame_subclaves", 8, solo_clave, subclaves<lumoreg_dame_subclaves_u, ul, const wchar_t*>,
         [](const argumentos& a) -> std::string {
             ArrCADENA* l = arr_CreaCADENA(0);
             arr_AppendCADENA(l, "before");
             const unsigned short r = lumoreg_dame_subclaves(2, estrecho(a[1]), l);
             return std::to_string(r) + " " + muestra(l);
         },
         [](reglas& r, const argumentos& a, const std::string&) { return modela_subclaves(r, a[1]); },
         nullptr},
        {"lumoreg_dame_subclaves_ex", 4, vista_y_clave,
         subclaves<lumoreg_dame_subclaves_ex_u, ul, ul, const wchar_t*>, nullptr,
         [](reglas& r, const argumentos& a, const std::string&) { return modela_subclaves(r, a[2]); },
         nullptr},
        {"lumoreg_lee_valores_cadena_clave_ex", 8, vista_y_clave,
         [](const argumentos& a) -> std::string {
             auto* nombres = reinterpret_cast<ArrCADENA_u*>(0x5A5Aull);
             auto* datos = reinterpret_cast<ArrPunteroConTipo*>(0x5A5Aull);
             if (lumoreg_lee_valores_cadena_clave_ex_u(static_cast<ul>(entero(a[0])),
                                                       static_cast<ul>(entero(a[1])), ancho{a[2]}, &nombres,
                                                       &datos) == 0) {
                 return nombres == nullptr && datos == nullptr ? "0" : "0, and not NULL";
             }
             std::vector<std::string> v;
             for (ul i = 0; i < arr_NumElemsPuntero(datos); ++i) {
                 const auto* l = static_cast<const ArrCADENA_u*>(arr_GetPunteroConTipo(datos, i));
                 std::vector<std::string> trozos;
                 for (ul k = 0; k < arr_NumElemsCADENA_u(l); ++k) {
                     trozos.push_back(u8(arr_GetCADENA_u(l, k)));
                 }
                 v.push_back(u8(arr_GetCADENA_u(nombres, i)) + "=" + entre_barras(trozos));
             }
             const bool a_la_par = arr_NumElemsCADENA_u(nombres) == arr_NumElemsPuntero(datos);
             arr_DestruyeCADENA_u(&nombres);
             arr_DestruyeEstructurasConTipo(&datos, [](void** l) {
                 auto* lista_ = static_cast<ArrCADENA_u*>(*l);
                 arr_DestruyeCADENA_u(&lista_);
                 *l = nullptr;
             });
             std::sort(v.begin(), v.end());  // the system gives them in no order
             return std::string(a_la_par ? "1 " : "not parallel ") + entre_barras(v);
         },
         nullptr,
         [](reglas& r, const argumentos& a, const std::string&) -> std::string {
             clave* c = abierta(r, a[2]);
             if (c == nullptr) {
                 return "0";
             }
             std::vector<std::string> v;
             for (const auto& [plegado, x] : c->valores) {
                 std::vector<std::string> trozos;
                 if (x.tipo == REG_SZ) {
                     trozos.push_back(u(hasta_el_nulo(texto_de(x.bytes))));
                 } else if (x.tipo == REG_MULTI_SZ) {
                     for (const texto_w& t : modelos::trozos_de_multicadena(texto_de(x.bytes))) {
                         trozos.push_back(u(t));
                     }
                 } else {
                     continue;
                 }
                 v.push_back(u(x.nombre) + "=" + entre_barras(trozos));
             }
             std::sort(v.begin(), v.end());
             return "1 " + entre_barras(v);
         },
         nullptr},
    };
    return todas;
}

void mira(HKEY padre, const texto_w& nombre, const std::string& donde, std::vector<std::string>& lineas) {
    HKEY c = nullptr;
    if (::RegOpenKeyExW(padre, nombre.c_str(), 0, KEY_READ, &c) != ERROR_SUCCESS) {
        return;
    }
    lineas.push_back(donde);
    wchar_t n[300];
    for (DWORD i = 0, largo = 300; ::RegEnumKeyExW(c, i, n, &largo, nullptr, nullptr, nullptr, nullptr) == 0;
         ++i, largo = 300) {
        mira(c, n, donde + "\\" + u8(n), lineas);
    }
    BYTE datos[2048];
    DWORD tipo = 0;
    DWORD bytes = sizeof datos;
    for (DWORD i = 0, largo = 300; ::RegEnumValueW(c, i, n, &largo, nullptr, &tipo, datos, &bytes) == 0;
         ++i, largo = 300, bytes = sizeof datos) {
        lineas.push_back(donde + " " + u8(n) + " type " + std::to_string(tipo) + " " +
                         u8(interno::vista_w(reinterpret_cast<const wchar_t*>(datos), bytes / 2)) + " " +
                         std::to_string(bytes));
    }
    ::RegCloseKey(c);
}
void apunta_clave(const clave& c, const std::string& donde, std::vector<std::string>& lineas) {
    lineas.push_back(donde);
    for (const auto& [plegado, hija] : c.hijas) {
        apunta_clave(hija, donde + "\\" + u(hija.nombre), lineas);
    }
    for (const auto& [plegado, v] : c.valores) {
        lineas.push_back(donde + " " + u(v.nombre) + " type " + std::to_string(v.tipo) + " " +
                         u(texto_de(v.bytes)) + " " + std::to_string(v.bytes.size()));
    }
}

}  // namespace

const std::vector<fila>& filas_del_registro() {
    return todas_las_del_registro();
}

void empieza_el_registro(reglas& r) {
    ::RegDeleteTreeW(HKEY_CURRENT_USER, base.c_str());
    HKEY c = nullptr;
    ::RegCreateKeyExW(HKEY_CURRENT_USER, base.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &c, nullptr);
    ::RegCloseKey(c);
    r.registro = {};
    r.registro.crea(base);
}

void acaba_el_registro() {
    ::RegDeleteTreeW(HKEY_CURRENT_USER, base.c_str());
}

std::string diferencia_en_el_registro(reglas& r) {
    std::vector<std::string> real;
    std::vector<std::string> pensado;
    mira(HKEY_CURRENT_USER, base, "", real);
    apunta_clave(*r.registro.busca(base), "", pensado);
    std::sort(real.begin(), real.end());
    std::sort(pensado.begin(), pensado.end());
    for (const std::string& l : real) {
        if (!std::binary_search(pensado.begin(), pensado.end(), l)) {
            return "not expected in the registry: " + l;
        }
    }
    for (const std::string& l : pensado) {
        if (!std::binary_search(real.begin(), real.end(), l)) {
            return "missing in the registry: " + l;
        }
    }
    return "";
}

}  // namespace estado
