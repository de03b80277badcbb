// What the tests of temporary and unique files share: the TEMP of the process, a false registry, a system that
// refuses names, and the shape of names and messages.
#pragma once

#include <map>

#include "apoyo/apoyo.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/hijo.hpp"
#include "companions/sistema.hpp"
#include "lumodir.h"

namespace apoyo {

using textos = std::vector<std::string>;

// TEMP of the process, for the life of this object.
class con_temp {
public:
    explicit con_temp(const std::string& valor) {
        for (const wchar_t* nombre : {L"TMP", L"TEMP"}) {
            antes_[nombre] = variable(nombre);
            ::SetEnvironmentVariableW(nombre, w(valor).c_str());
        }
    }
    ~con_temp() {
        for (const auto& [nombre, valor] : antes_) {
            ::SetEnvironmentVariableW(nombre, valor.empty() ? nullptr : valor.c_str());
        }
    }
    con_temp(const con_temp&) = delete;
    con_temp& operator=(const con_temp&) = delete;

private:
    std::map<const wchar_t*, texto_w> antes_;
};

// A registry of one value, the user's local-settings folder; by default none when it is empty. The real one is not touched.
class con_local_settings {
public:
    explicit con_local_settings(const std::string& carpeta) : con_local_settings(carpeta, !carpeta.empty()) {}
    con_local_settings(const std::string& carpeta, bool hay) {
        valor() = w(carpeta);
        hay_valor() = hay;
        g_aperturas().clear();
        g_valores().clear();
    }
    static texto_w& valor() {
        static texto_w texto;
        return texto;
    }
    static bool& hay_valor() {
        static bool hay = false;
        return hay;
    }
    static textos& g_aperturas() {
        static textos lista;
        return lista;
    }
    static textos& g_valores() {
        static textos lista;
        return lista;
    }

private:
    static LSTATUS WINAPI i_abre(HKEY raiz, const wchar_t* ruta, DWORD, REGSAM, HKEY* clave) {
        EXPECT_EQ(raiz, HKEY_CURRENT_USER);
        g_aperturas().push_back(u8(ruta));
        *clave = HKEY_CURRENT_USER;  // closing it does nothing
        return hay_valor() ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
    }
    static LSTATUS WINAPI i_cuenta(HKEY, wchar_t*, DWORD*, DWORD*, DWORD*, DWORD*, DWORD*, DWORD* num, DWORD*,
                                   DWORD* mayor, DWORD*, FILETIME*) {
        *num = 1;
        *mayor = static_cast<DWORD>(valor().size() * sizeof(wchar_t));
        return ERROR_SUCCESS;
    }
    static LSTATUS WINAPI i_lee(HKEY, const wchar_t* nombre, DWORD*, DWORD*, BYTE* datos, DWORD* bytes) {
        g_valores().push_back(u8(nombre));
        *bytes = static_cast<DWORD>(valor().size() * sizeof(wchar_t));
        std::copy(valor().begin(), valor().end(), reinterpret_cast<wchar_t*>(datos));
        return ERROR_SUCCESS;
    }

    sustituye<decltype(interno::sistema.RegOpenKeyExW)> abre_{interno::sistema.RegOpenKeyExW, i_abre};
    sustituye<decltype(interno::sistema.RegQueryInfoKeyW)> cuenta_{interno::sistema.RegQueryInfoKeyW,
                                                                   i_cuenta};
    sustituye<decltype(interno::sistema.RegQueryValueExW)> lee_{interno::sistema.RegQueryValueExW, i_lee};
};

inline std::string directorio_temporal_de_la_biblioteca() {
    return toma(lumodir_dameDirectorioTemporal());
}
inline std::string unico(const std::string& directorio, const std::string& ext) {
    return toma(lumodir_creaFicheroUnicoEnDirectorio(w(directorio).c_str(), w(ext).c_str()));
}
inline std::string con_ext(const std::string& ext) {
    return toma(lumodir_creaFicheroTemporalConExt(w(ext).c_str()));
}
inline std::string nombre_de(const std::string& ruta) {
    return ruta.substr(ruta.rfind('\\') + 1);
}

// Prefix, hexadecimal number, extension.
inline bool tiene_forma(const std::string& nombre, const std::string& prefijo, const std::string& fin) {
    if (nombre.size() <= prefijo.size() + fin.size() || nombre.substr(0, prefijo.size()) != prefijo ||
        nombre.substr(nombre.size() - fin.size()) != fin) {
        return false;
    }
    const std::string numero = nombre.substr(prefijo.size(), nombre.size() - prefijo.size() - fin.size());
    return numero.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
}

inline const std::string no_se_puede =
    "Windows does not allow a temporary file to be created in the directory that has been established for it "
    "(";
inline const std::string codigo_devuelto = "The error code returned by Windows is '";
inline const std::string para_resolverlo =
    "To resolve this problem, you can delete the files located in the '";
inline const std::string o_modificar =
    "' directory or modify the Windows 'TEMP' environment variable to set the directory where the program's "
    "temporary files will be created.";
inline const std::string para_solucionarlo =
    "To solve this problem, you can modify the 'TEMP' environment variable in Windows and establish the "
    "directory "
    "where temporary program files should be created.";

inline std::string aviso(const std::string& directorio, const std::string& error) {
    return no_se_puede + directorio + ").\n" + codigo_devuelto + error + "'.\n" + para_resolverlo +
           directorio + o_modificar;
}
inline std::string detalle_de_temporal(const std::string& directorio, const std::string& error) {
    return no_se_puede + directorio + ").\n" + codigo_devuelto + error + "'.\n" + para_solucionarlo;
}

// What was asked of the system's naming: "directory|prefix".
inline textos g_peticiones;
inline interno::tabla_sistema g_real;
inline DWORD g_codigo = 0;
inline unsigned g_falla_las_primeras = 0;
inline UINT WINAPI nombra_fallando(const wchar_t* directorio, const wchar_t* prefijo, UINT unico_pedido,
                                   wchar_t* nombre) {
    EXPECT_EQ(unico_pedido, 0u);
    g_peticiones.push_back(u8(directorio) + "|" + u8(prefijo));
    if (g_peticiones.size() <= g_falla_las_primeras) {
        std::copy_n(L"garbage", 8, nombre);  // what a failing system leaves behind names no file
        ::SetLastError(g_codigo);
        return 0;
    }
    return g_real.GetTempFileNameW(directorio, prefijo, unico_pedido, nombre);
}

class nombres_que_fallan {
public:
    explicit nombres_que_fallan(unsigned cuantas, DWORD codigo) {
        g_real = interno::sistema;
        g_real.GetTempFileNameW = antes_;
        g_peticiones.clear();
        g_falla_las_primeras = cuantas;
        g_codigo = codigo;
    }

private:
    decltype(interno::sistema.GetTempFileNameW) antes_ = interno::sistema.GetTempFileNameW;
    sustituye<decltype(interno::sistema.GetTempFileNameW)> nombra_{interno::sistema.GetTempFileNameW,
                                                                   nombra_fallando};
};

}  // namespace apoyo
