// A directory of its own for a test, and the plain ways of looking at a disk that tests need beside those of the
// library. Windows only.
//
// Paths are UTF-8 and relative to the directory; every call here goes straight to Windows with the extended-length
// prefix: faults injected into the library's table do not reach it, and paths of any length will do.
// The destructor removes everything, read-only files included; it never goes into a link.
#pragma once

#include <algorithm>

#include "apoyo/apoyo.hpp"
#include "companions/msglocal.hpp"
#include "companions/sistema.hpp"

namespace apoyo {

// What marks an entry of a false listing as a directory.
constexpr DWORD atributo_dir = FILE_ATTRIBUTE_DIRECTORY;

// The full form of a path, as the system tells it now; the path itself when it tells none.
inline std::string completa(const std::string& ruta) {
    const DWORD largo = ::GetFullPathNameW(w(ruta).c_str(), 0, nullptr, nullptr);
    texto_w forma(largo == 0 ? 0 : largo - 1, L'\0');
    return largo == 0 || ::GetFullPathNameW(w(ruta).c_str(), largo, forma.data(), nullptr) == 0 ? ruta
                                                                                                : u8(forma);
}

// What the library says of a code of the system's.
inline std::string texto_de_codigo(DWORD codigo) {
    return u8(interno::strgetlasterror_texto_cod_error(codigo).ver());
}

// Wherever a test goes, the current directory is back in its place at the end.
class directorio_actual_restaurado {
public:
    directorio_actual_restaurado() { ::GetCurrentDirectoryW(1024, antes_); }
    ~directorio_actual_restaurado() { EXPECT_TRUE(::SetCurrentDirectoryW(antes_)); }
    directorio_actual_restaurado(const directorio_actual_restaurado&) = delete;
    directorio_actual_restaurado& operator=(const directorio_actual_restaurado&) = delete;

private:
    wchar_t antes_[1024] = {};
};
class en_directorio {
public:
    explicit en_directorio(const texto_w& nuevo) {
        EXPECT_TRUE(::SetCurrentDirectoryW(nuevo.c_str())) << u8(nuevo);
    }

private:
    directorio_actual_restaurado antes_;
};

class directorio_temporal {
public:
    directorio_temporal() {
        wchar_t temporal[MAX_PATH + 1];
        wchar_t corto[MAX_PATH + 1];
        const DWORD largo = ::GetTempPathW(MAX_PATH + 1, corto);
        // One spelling of the name, so that results can be compared as text.
        const DWORD hecho = ::GetLongPathNameW(corto, temporal, MAX_PATH + 1);
        base_ = u8(interno::vista_w(hecho != 0 ? temporal : corto, hecho != 0 ? hecho : largo));
        while (!base_.empty() && base_.back() == '\\') {
            base_.pop_back();
        }
        static unsigned numero = 0;
        const std::string principio =
            base_ + "\\lumo_prueba_" + std::to_string(::GetCurrentProcessId()) + "_";
        do {
            base_ = principio + std::to_string(++numero);
        } while (!::CreateDirectoryW(i_larga("").c_str(), nullptr) &&
                 ::GetLastError() == ERROR_ALREADY_EXISTS);
        EXPECT_TRUE(existe("")) << base_;
    }
    ~directorio_temporal() { borra(""); }
    directorio_temporal(const directorio_temporal&) = delete;
    directorio_temporal& operator=(const directorio_temporal&) = delete;

    // The full path of something in the directory; "" is the directory itself, without a final separator.
    std::string ruta(std::string_view relativa = {}) const {
        return relativa.empty() ? base_ : base_ + "\\" + std::string(relativa);
    }
    texto_w ruta_w(std::string_view relativa = {}) const { return w(ruta(relativa)); }
    texto_a ruta_a(std::string_view relativa = {}) const { return cp1252(ruta(relativa)); }

    // Creates a directory with its parents, and a file with its directory; answer the full path.
    std::string directorio(std::string_view relativa) const {
        for (std::size_t i = relativa.find('\\'); i != relativa.npos; i = relativa.find('\\', i + 1)) {
            ::CreateDirectoryW(i_larga(relativa.substr(0, i)).c_str(), nullptr);
        }
        ::CreateDirectoryW(i_larga(relativa).c_str(), nullptr);
        EXPECT_TRUE(es_directorio(relativa)) << relativa;
        return ruta(relativa);
    }
    std::string fichero(std::string_view relativa, std::string_view contenido = "contenido",
                        DWORD atributos_nuevos = FILE_ATTRIBUTE_NORMAL) const {
        const std::size_t barra = relativa.rfind('\\');
        if (barra != relativa.npos) {
            directorio(relativa.substr(0, barra));
        }
        ::SetFileAttributesW(i_larga(relativa).c_str(),
                             FILE_ATTRIBUTE_NORMAL);  // what is read-only stays as it is
        const HANDLE h = ::CreateFileW(i_larga(relativa).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                       FILE_ATTRIBUTE_NORMAL, nullptr);
        EXPECT_NE(h, INVALID_HANDLE_VALUE) << relativa << " error " << ::GetLastError();
        DWORD escritos = 0;
        ::WriteFile(h, contenido.data(), static_cast<DWORD>(contenido.size()), &escritos, nullptr);
        ::CloseHandle(h);
        if (atributos_nuevos != FILE_ATTRIBUTE_NORMAL) {
            pon_atributos(relativa, atributos_nuevos);
        }
        return ruta(relativa);
    }

    DWORD atributos(std::string_view relativa) const {
        return ::GetFileAttributesW(i_larga(relativa).c_str());
    }
    void pon_atributos(std::string_view relativa, DWORD nuevos) const {
        // Wine keeps "hidden" and "system" where the Unix side lets nobody but root write on a read-only file.
        const DWORD otros = nuevos & ~DWORD{FILE_ATTRIBUTE_READONLY};
        if (otros != 0 && otros != nuevos) {
            EXPECT_TRUE(::SetFileAttributesW(i_larga(relativa).c_str(), otros)) << relativa;
        }
        EXPECT_TRUE(::SetFileAttributesW(i_larga(relativa).c_str(), nuevos)) << relativa;
    }
    // The last write, in seconds since 1970 (UTC).
    void pon_fecha(std::string_view relativa, long long segundos) const {
        const auto valor = static_cast<unsigned long long>(segundos * 10'000'000 + 116'444'736'000'000'000);
        const FILETIME fecha = {static_cast<DWORD>(valor & 0xFFFFFFFFu), static_cast<DWORD>(valor >> 32)};
        const HANDLE h = abre(relativa, FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ);
        EXPECT_TRUE(::SetFileTime(h, nullptr, nullptr, &fecha)) << relativa;
        ::CloseHandle(h);
    }
    bool existe(std::string_view relativa) const { return atributos(relativa) != INVALID_FILE_ATTRIBUTES; }
    bool es_directorio(std::string_view relativa) const {
        return existe(relativa) && (atributos(relativa) & FILE_ATTRIBUTE_DIRECTORY) != 0;
    }
    bool es_de_solo_lectura(std::string_view relativa) const {
        return existe(relativa) && (atributos(relativa) & FILE_ATTRIBUTE_READONLY) != 0;
    }
    std::string contenido(std::string_view relativa) const {
        const HANDLE h = ::CreateFileW(i_larga(relativa).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                       OPEN_EXISTING, 0, nullptr);
        if (h == INVALID_HANDLE_VALUE) {
            return "(missing)";
        }
        std::string texto;
        char trozo[4096];
        DWORD leidos = 0;
        while (::ReadFile(h, trozo, sizeof trozo, &leidos, nullptr) && leidos != 0) {
            texto.append(trozo, leidos);
        }
        ::CloseHandle(h);
        return texto;
    }
    // A handle on a file, for tests that hold it open; the caller closes it.
    HANDLE abre(std::string_view relativa, DWORD acceso, DWORD compartir) const {
        return ::CreateFileW(i_larga(relativa).c_str(), acceso, compartir, nullptr, OPEN_EXISTING,
                             FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    }

    // Everything below, relative and sorted; directories end in "\".
    std::vector<std::string> arbol(std::string_view relativa = {}) const {
        std::vector<std::string> resultado;
        for (const entrada& e : i_entradas(relativa)) {
            const std::string hijo = relativa.empty() ? e.nombre : std::string(relativa) + "\\" + e.nombre;
            resultado.push_back(e.es_directorio() ? hijo + "\\" : hijo);
            if (e.es_directorio() && !e.es_enlace()) {
                for (std::string& nieto : arbol(hijo)) {
                    resultado.push_back(std::move(nieto));
                }
            }
        }
        std::sort(resultado.begin(), resultado.end());
        return resultado;
    }

    // Removes it with all that it holds; nothing happens when it is not there.
    void borra(std::string_view relativa) const {
        const DWORD antes = atributos(relativa);
        if (antes == INVALID_FILE_ATTRIBUTES) {
            return;
        }
        if ((antes & FILE_ATTRIBUTE_READONLY) != 0) {
            ::SetFileAttributesW(i_larga(relativa).c_str(), antes & ~DWORD{FILE_ATTRIBUTE_READONLY});
        }
        if ((antes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            EXPECT_TRUE(::DeleteFileW(i_larga(relativa).c_str())) << relativa << " " << ::GetLastError();
            return;
        }
        if ((antes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
            for (const entrada& e : i_entradas(relativa)) {
                borra(relativa.empty() ? e.nombre : std::string(relativa) + "\\" + e.nombre);
            }
        }
        EXPECT_TRUE(::RemoveDirectoryW(i_larga(relativa).c_str())) << relativa << " " << ::GetLastError();
    }
    // Empties it.
    void limpia() const {
        for (const entrada& e : i_entradas({})) {
            borra(e.nombre);
        }
    }

private:
    struct entrada {
        std::string nombre;
        DWORD atributos;
        bool es_directorio() const { return (atributos & FILE_ATTRIBUTE_DIRECTORY) != 0; }
        bool es_enlace() const { return (atributos & FILE_ATTRIBUTE_REPARSE_POINT) != 0; }
    };

    texto_w i_larga(std::string_view relativa) const {
        std::string resultado = "\\\\?\\" + ruta(relativa);
        std::replace(resultado.begin(), resultado.end(), '/', '\\');  // the prefix takes it for a character
        return w(resultado);
    }

    std::vector<entrada> i_entradas(std::string_view relativa) const {
        std::vector<entrada> resultado;
        WIN32_FIND_DATAW datos;
        const HANDLE h = ::FindFirstFileW((i_larga(relativa) + w("\\*")).c_str(), &datos);
        if (h == INVALID_HANDLE_VALUE) {
            return resultado;
        }
        do {
            const std::string nombre = u8(datos.cFileName);
            if (nombre != "." && nombre != "..") {
                resultado.push_back({nombre, datos.dwFileAttributes});
            }
        } while (::FindNextFileW(h, &datos));
        ::FindClose(h);
        return resultado;
    }

    std::string base_;
};

}  // namespace apoyo
