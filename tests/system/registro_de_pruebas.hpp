// A key of the tests' own, the calls that look at it from outside, and ways of making registry calls fail.
#pragma once

#include <algorithm>

#include "apoyo/apoyo.hpp"
#include "apoyo/cuenta_de_fallos.hpp"
#include "apoyo/llamadas.hpp"
#include "companions/sistema.hpp"

namespace apoyo {

inline constexpr const wchar_t* clave_de_pruebas = L"Software\\lumodir-pruebas";
inline constexpr unsigned long raiz_de_pruebas = 2;  // HKEY_CURRENT_USER

inline texto_w bajo(std::string_view ruta_utf8) {
    return texto_w(clave_de_pruebas) + L"\\" + w(ruta_utf8);
}
inline texto_a bajo_a(std::string_view ruta_utf8) {
    return "Software\\lumodir-pruebas\\" + cp1252(ruta_utf8);
}

inline HKEY abre(const wchar_t* ruta) {
    HKEY clave = nullptr;
    ::RegOpenKeyExW(HKEY_CURRENT_USER, ruta, 0, KEY_ALL_ACCESS, &clave);
    return clave;
}
inline bool existe(const texto_w& ruta) {
    const HKEY clave = abre(ruta.c_str());
    ::RegCloseKey(clave);
    return clave != nullptr;
}
inline void crea(const texto_w& ruta) {
    HKEY clave = nullptr;
    ASSERT_EQ(::RegCreateKeyExW(HKEY_CURRENT_USER, ruta.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                                &clave, nullptr),
              ERROR_SUCCESS);
    ::RegCloseKey(clave);
}
inline void crea_enlace(HKEY raiz, const texto_w& ruta, const texto_w& destino) {
    HKEY clave = nullptr;
    ASSERT_EQ(::RegCreateKeyExW(raiz, ruta.c_str(), 0, nullptr, REG_OPTION_CREATE_LINK,
                                KEY_ALL_ACCESS | KEY_CREATE_LINK, nullptr, &clave, nullptr),
              ERROR_SUCCESS);
    ASSERT_EQ(::RegSetValueExW(clave, L"SymbolicLinkValue", 0, REG_LINK,
                               reinterpret_cast<const BYTE*>(destino.data()),
                               static_cast<DWORD>(destino.size() * sizeof(wchar_t))),
              ERROR_SUCCESS);
    ::RegCloseKey(clave);
}
inline void pon(const texto_w& ruta, const wchar_t* nombre, DWORD tipo, std::string_view bytes) {
    const HKEY clave = abre(ruta.c_str());
    ASSERT_NE(clave, nullptr);
    ASSERT_EQ(::RegSetValueExW(clave, nombre, 0, tipo, reinterpret_cast<const BYTE*>(bytes.data()),
                               static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS);
    ::RegCloseKey(clave);
}
inline void pon(const texto_w& ruta, const wchar_t* nombre, DWORD tipo, const texto_w& texto) {
    pon(ruta, nombre, tipo,
        std::string_view(reinterpret_cast<const char*>(texto.data()), texto.size() * sizeof(wchar_t)));
}

struct valor {
    DWORD tipo = REG_NONE;
    std::string bytes;
    bool existe = false;
};
inline valor lee(const texto_w& ruta, const wchar_t* nombre) {
    valor resultado;
    DWORD tamanyo = 0;
    const HKEY clave = abre(ruta.c_str());
    if (::RegQueryValueExW(clave, nombre, nullptr, &resultado.tipo, nullptr, &tamanyo) == ERROR_SUCCESS) {
        resultado.existe = true;
        resultado.bytes.resize(tamanyo);
        ::RegQueryValueExW(clave, nombre, nullptr, nullptr, reinterpret_cast<BYTE*>(resultado.bytes.data()),
                           &tamanyo);
    }
    ::RegCloseKey(clave);
    return resultado;
}

inline std::vector<std::string> subclaves(const texto_w& ruta) {
    std::vector<std::string> nombres;
    const HKEY clave = abre(ruta.c_str());
    wchar_t nombre[256];
    for (DWORD longitud = 256; ::RegEnumKeyExW(clave, static_cast<DWORD>(nombres.size()), nombre, &longitud,
                                               nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         longitud = 256) {
        nombres.push_back(u8(nombre));
    }
    ::RegCloseKey(clave);
    return nombres;
}

// A key with all that is below it, links as links: the system's own call goes round and round where one leads back,
// and a run that was broken off may have left such.
inline void borra_arbol(HKEY padre, const wchar_t* nombre) {
    HKEY clave = nullptr;
    if (::RegOpenKeyExW(padre, nombre, REG_OPTION_OPEN_LINK, KEY_ALL_ACCESS, &clave) != ERROR_SUCCESS) {
        return;
    }
    wchar_t hija[256];
    for (DWORD longitud = 256, quedan = 0;
         ::RegEnumKeyExW(clave, quedan, hija, &longitud, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         longitud = 256) {
        borra_arbol(clave, hija);
        HKEY resto = nullptr;
        quedan += ::RegOpenKeyExW(clave, hija, REG_OPTION_OPEN_LINK, DELETE, &resto) == ERROR_SUCCESS ? 1 : 0;
        ::RegCloseKey(resto);
    }
    ::NtDeleteKey(clave);
    ::RegCloseKey(clave);
}
inline void borra_arbol(const texto_w& ruta) {
    borra_arbol(HKEY_CURRENT_USER, ruta.c_str());
}

// Each test finds the key empty and leaves nothing of it.
class con_registro : public testing::Test {
protected:
    void SetUp() override {
        borra_arbol(clave_de_pruebas);
        crea(clave_de_pruebas);
    }
    void TearDown() override {
        borra_arbol(clave_de_pruebas);
        EXPECT_FALSE(existe(clave_de_pruebas));
    }
};

// What a call hands to the system: which key, texts, numbers in base 16, "&" before what is changed, "-" for NULL.
inline std::string en_texto(unsigned long numero) {
    char texto[16];
    std::snprintf(texto, sizeof texto, "%lX", numero);
    return texto;
}
inline std::string en_texto(HKEY clave) {
    return clave == HKEY_CURRENT_USER    ? "HKCU"
           : clave == HKEY_LOCAL_MACHINE ? "HKLM"
           : clave == nullptr            ? "-"
                                         : "key";
}
inline std::string en_texto(const wchar_t* texto) {
    return texto == nullptr ? "-" : "'" + u8(texto) + "'";
}
inline std::string en_texto(const char* texto) {
    return texto == nullptr ? "-" : "'" + de_cp1252(texto) + "'";
}
inline std::string en_texto(DWORD* numero) {
    return numero == nullptr ? "-" : "&" + en_texto(*numero);
}
template <class T>
std::string en_texto(T* otra_cosa) {
    return otra_cosa == nullptr ? "-" : "&";
}

// Every entry of the table counts its call, may be told to fail, and goes on to the real one.
struct vigilancia {
    interno::tabla_sistema real;
    unsigned long llamadas = 0;
    unsigned long falla_desde = 0;  // number of the first call that fails, from 1; 0 for none
    bool para_siempre = false;
    long abiertas = 0;
    std::vector<std::string> pedidas;  // each call as "Name(argument, ...)"

    bool falla() {
        ++llamadas;
        const bool toca =
            falla_desde != 0 && (para_siempre ? llamadas >= falla_desde : llamadas == falla_desde);
        fallos_inyectados += toca ? 1 : 0;
        return toca;
    }
};
inline vigilancia vigilado;

template <auto Entrada>
struct vigila;
template <class... A, LSTATUS (WINAPI* interno::tabla_sistema::*Entrada)(A...)>
struct vigila<Entrada> {
    static LSTATUS WINAPI llama(A... argumentos) {
        constexpr bool cierra = std::is_same_v<LSTATUS(A...), LSTATUS(HKEY)>;
        std::string pedida;
        ((pedida += (pedida.empty() ? "" : ", ") + en_texto(argumentos)), ...);
        vigilado.pedidas.push_back(std::string(llamada_de<Entrada>::nombre) + "(" + pedida + ")");
        if (vigilado.falla()) {
            if constexpr (cierra) {  // a real handle must not stay open for it
                (vigilado.real.*Entrada)(argumentos...);
                --vigilado.abiertas;
            }
            return ERROR_ACCESS_DENIED;
        }
        const LSTATUS resultado = (vigilado.real.*Entrada)(argumentos...);
        if constexpr (cierra) {
            --vigilado.abiertas;
        }
        return resultado;
    }
    // Entries that open a key.
    static LSTATUS WINAPI abre(A... argumentos) {
        const LSTATUS resultado = llama(argumentos...);
        vigilado.abiertas += resultado == ERROR_SUCCESS ? 1 : 0;
        return resultado;
    }
};

class registro_vigilado {
public:
    using tabla = interno::tabla_sistema;
    explicit registro_vigilado(unsigned long falla_desde = 0, bool para_siempre = false)
        : antes_(interno::sistema) {
        vigilado = {antes_, 0, falla_desde, para_siempre, 0, {}};
        tabla& t = interno::sistema;
        t.RegOpenKeyExA = vigila<&tabla::RegOpenKeyExA>::abre;
        t.RegOpenKeyExW = vigila<&tabla::RegOpenKeyExW>::abre;
        t.RegCreateKeyExW = vigila<&tabla::RegCreateKeyExW>::abre;
        t.RegCloseKey = vigila<&tabla::RegCloseKey>::llama;
        t.RegQueryInfoKeyA = vigila<&tabla::RegQueryInfoKeyA>::llama;
        t.RegQueryInfoKeyW = vigila<&tabla::RegQueryInfoKeyW>::llama;
        t.RegQueryValueExA = vigila<&tabla::RegQueryValueExA>::llama;
        t.RegQueryValueExW = vigila<&tabla::RegQueryValueExW>::llama;
        t.RegSetValueExW = vigila<&tabla::RegSetValueExW>::llama;
        t.RegDeleteValueW = vigila<&tabla::RegDeleteValueW>::llama;
        t.RegEnumKeyExA = vigila<&tabla::RegEnumKeyExA>::llama;
        t.RegEnumKeyExW = vigila<&tabla::RegEnumKeyExW>::llama;
        t.RegEnumValueW = vigila<&tabla::RegEnumValueW>::llama;
        t.NtDeleteKey = vigila<&tabla::NtDeleteKey>::llama;
    }
    ~registro_vigilado() {
        interno::sistema = antes_;
        EXPECT_EQ(vigilado.abiertas, 0) << "keys left open";
    }
    registro_vigilado(const registro_vigilado&) = delete;
    registro_vigilado& operator=(const registro_vigilado&) = delete;

private:
    tabla antes_;
};

// The reports as "expression [detail]".
inline std::vector<std::string> toma_informes_con_detalle() {
    std::vector<std::string> textos;
    for (const informe& i : toma_informes()) {
        EXPECT_EQ(i.etiqueta, "lumoreg (LUMODIR.DLL)");
        EXPECT_GT(i.linea, 0ul);
        textos.push_back(i.detalle == "(NULL)" ? i.expresion : i.expresion + " [" + i.detalle + "]");
    }
    return textos;
}
#define ESPERA_DETALLES(...) \
    EXPECT_EQ(::apoyo::toma_informes_con_detalle(), (std::vector<std::string>{__VA_ARGS__}))

}  // namespace apoyo
