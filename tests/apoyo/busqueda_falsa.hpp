// A false directory in the place of the system's search, for entries, reparse tags and error codes that no file system
// here can show. Windows only.
//
//     apoyo::busqueda_falsa falsa;
//     falsa.patrones["C:\\d\\*"] = {{"a.txt"}, {"enlace", FILE_ATTRIBUTE_DIRECTORY, IO_REPARSE_TAG_SYMLINK}};
//
// While it lives, the library's searches find what it was told, and nothing else. Names are UTF-8; lone surrogates
// travel as WTF-8.
#pragma once

#include <map>

#include "apoyo/apoyo.hpp"
#include "companions/sistema.hpp"

namespace apoyo {

// One entry of a false directory.
struct entrada_falsa {
    std::string nombre;
    DWORD atributos = FILE_ATTRIBUTE_NORMAL;
    DWORD etiqueta = 0;  // reparse tag
    FILETIME fecha = {};
};

class busqueda_falsa {
public:
    busqueda_falsa() { actual() = this; }
    ~busqueda_falsa() {
        EXPECT_EQ(abiertas, 0) << "searches left open";
        actual() = nullptr;
    }

    // Entries by search pattern (UTF-8), and the codes with which an opening, or the end of a walk, fails.
    std::map<std::string, std::vector<entrada_falsa>> patrones;
    std::map<std::string, DWORD> codigo_al_abrir;  // default: 2, file not found
    DWORD codigo_al_final = ERROR_NO_MORE_FILES;
    std::vector<std::string> abiertos;  // patterns that were asked for, in their order
    int abiertas = 0;                   // searches open now
    int pasos = 0;                      // calls of FindNextFile
    FINDEX_INFO_LEVELS ultimo_nivel = FindExInfoMaxInfoLevel;

private:
    struct abierta {
        std::vector<entrada_falsa> entradas;
        std::size_t siguiente = 0;
    };
    static busqueda_falsa*& actual() {
        static busqueda_falsa* p = nullptr;
        return p;
    }
    static void copia(const std::string& nombre, WIN32_FIND_DATAW* datos) {
        lstrcpynW(datos->cFileName, w(nombre).c_str(), MAX_PATH);
    }
    template <class E>
    static void escribe(const entrada_falsa& e, E* datos) {
        *datos = {};
        datos->dwFileAttributes = e.atributos;
        datos->dwReserved0 = e.etiqueta;
        datos->ftLastWriteTime = e.fecha;
        copia(e.nombre, datos);
    }
    template <class E>
    HANDLE abre(const std::string& patron, E* datos) {
        abiertos.push_back(patron);
        const auto donde = patrones.find(patron);
        if (donde == patrones.end() || donde->second.empty()) {
            const auto codigo = codigo_al_abrir.find(patron);
            ::SetLastError(codigo == codigo_al_abrir.end() ? ERROR_FILE_NOT_FOUND : codigo->second);
            return INVALID_HANDLE_VALUE;
        }
        ++abiertas;
        auto* nueva = new abierta{donde->second, 1};
        escribe(nueva->entradas[0], datos);
        return nueva;
    }
    template <class E>
    BOOL sigue(HANDLE h, E* datos) {
        ++pasos;
        auto* a = static_cast<abierta*>(h);
        if (a->siguiente == a->entradas.size()) {
            ::SetLastError(codigo_al_final);
            return FALSE;
        }
        escribe(a->entradas[a->siguiente++], datos);
        return TRUE;
    }
    static HANDLE WINAPI abre_w(LPCWSTR patron, FINDEX_INFO_LEVELS nivel, LPVOID datos, FINDEX_SEARCH_OPS,
                                LPVOID, DWORD) {
        actual()->ultimo_nivel = nivel;
        return actual()->abre(u8(patron), static_cast<WIN32_FIND_DATAW*>(datos));
    }
    static BOOL WINAPI sigue_w(HANDLE h, LPWIN32_FIND_DATAW datos) { return actual()->sigue(h, datos); }
    static BOOL WINAPI cierra(HANDLE h) {
        --actual()->abiertas;
        delete static_cast<abierta*>(h);
        ::SetLastError(ERROR_INVALID_HANDLE);  // a destructor must not let this show
        return TRUE;
    }

    sustituye<decltype(interno::sistema.FindFirstFileExW)> f1_{interno::sistema.FindFirstFileExW, abre_w};
    sustituye<decltype(interno::sistema.FindNextFileW)> f2_{interno::sistema.FindNextFileW, sigue_w};
    sustituye<decltype(interno::sistema.FindClose)> f3_{interno::sistema.FindClose, cierra};
};

}  // namespace apoyo
