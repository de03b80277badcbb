// What the library deletes by handle, seen where it goes through the table: which entries were tried, in their order,
// and a code to fail with for some of them. Windows only.
//
//     apoyo::borrados_vistos vistos;
//     vistos.falla = [](const std::string& ruta, bool es_directorio) { return es_directorio ? 5u : 0u; };
//
// One attempt in two ways of deleting (with POSIX semantics, and plainly after their refusal) is one attempt here.
#pragma once

#include "apoyo/apoyo.hpp"
#include "companions/sistema.hpp"

namespace apoyo {

class borrados_vistos {
public:
    borrados_vistos() { i_yo() = this; }
    ~borrados_vistos() { i_yo() = nullptr; }
    borrados_vistos(const borrados_vistos&) = delete;
    borrados_vistos& operator=(const borrados_vistos&) = delete;

    std::vector<std::string> rutas;  // of what was tried, as the system tells them, without its prefix
    // The code of the failure, or 0.
    std::function<DWORD(const std::string& ruta, bool es_directorio)> falla;
    // After one that went well.
    std::function<void(const std::string& ruta, bool es_directorio)> al_borrar;

private:
    using llamada = decltype(interno::sistema.SetFileInformationByHandle);

    static borrados_vistos*& i_yo() {
        static borrados_vistos* p = nullptr;
        return p;
    }
    static std::string i_ruta(HANDLE h) {
        wchar_t nombre[0x4000] = {};
        const DWORD largo = ::GetFinalPathNameByHandleW(h, nombre, 0x3FFF, 0);
        const std::string ruta = u8(interno::vista_w(nombre, largo));
        return ruta.starts_with("\\\\?\\") ? ruta.substr(4) : ruta;
    }
    static BOOL WINAPI i_pon(HANDLE h, FILE_INFO_BY_HANDLE_CLASS clase, LPVOID datos, DWORD bytes) {
        borrados_vistos& v = *i_yo();
        constexpr int borrado_ampliado = 21;
        const bool con_posix = clase == borrado_ampliado;
        if (clase != FileDispositionInfo && !con_posix) {
            return v.antes_(h, clase, datos, bytes);
        }
        const std::string ruta = i_ruta(h);
        BY_HANDLE_FILE_INFORMATION que = {};
        ::GetFileInformationByHandle(h, &que);
        const bool es_directorio = (que.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        const bool es_segunda_manera = !con_posix && v.rechazada_ == h;
        v.rechazada_ = nullptr;
        if (!es_segunda_manera) {
            v.rutas.push_back(ruta);
            const DWORD codigo = v.falla ? v.falla(ruta, es_directorio) : 0;
            if (codigo != 0) {
                ::SetLastError(codigo);
                return FALSE;
            }
        }
        if (!v.antes_(h, clase, datos, bytes)) {
            v.rechazada_ = con_posix ? h : nullptr;
            return FALSE;
        }
        if (v.al_borrar) {
            v.al_borrar(ruta, es_directorio);
        }
        return TRUE;
    }

    llamada antes_ = interno::sistema.SetFileInformationByHandle;
    HANDLE rechazada_ = nullptr;
    sustituye<llamada> desvio_{interno::sistema.SetFileInformationByHandle, i_pon};
};

}  // namespace apoyo
