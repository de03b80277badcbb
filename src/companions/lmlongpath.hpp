// The long-path library: the Windows calls on paths of any length. A path that Windows would refuse for its
// length is made full and given the extended-length prefix; every other path goes through as it is.
//
// Promises: each call returns what the Windows function of its name returns and leaves its last error in place;
// where there is an `error_out`, it receives the code of a failure (0 after success it does not touch). A usual
// path (absolute, short) costs no call besides the one asked for.
// Cannot promise: anything about a share that is not there.
// Checked by tests/companions/lmlongpath_win32_test.cpp.
#pragma once

#include "companions/cadena.hpp"
#include "companions/limites.hpp"
#include "companions/sistema.hpp"

namespace lumodir {

// A path as Windows takes it, for the time of one call: the caller's own text where that will do.
class ruta_sistema {
public:
    enum class uso { acceso, busqueda };  // a search keeps the points at the end of its pattern

    explicit ruta_sistema(const wchar_t* ruta, uso para = uso::acceso, lugar donde = lugar::aqui());
    ruta_sistema(const ruta_sistema&) = delete;
    ruta_sistema& operator=(const ruta_sistema&) = delete;
    // It ends between the call and the reading of its error code.
    ~ruta_sistema() {
        if (!propia_.es_nula()) {
            const conserva_ultimo_error conserva;
            propia_.vacia();
        }
    }

    const wchar_t* c_str() const noexcept { return texto_; }

private:
    cadena_w propia_;
    const wchar_t* texto_;
};

// Access modes of lmlongpath_waccess, as the C runtime numbers them.
inline constexpr unsigned acceso_existencia = 0;
inline constexpr unsigned acceso_escritura = 2;
inline constexpr unsigned acceso_lectura = 4;
unsigned short lmlongpath_waccess(const wchar_t* ruta, unsigned modo) noexcept;

// Permission modes of lmlongpath_wchmod (_S_IREAD, _S_IWRITE); 0 on success, -1 on failure.
inline constexpr int modo_lectura = 0x100;
inline constexpr int modo_escritura = 0x80;
int lmlongpath_wchmod(const wchar_t* ruta, int modo) noexcept;

DWORD lmlongpath_GetFileAttributesW(const wchar_t* ruta) noexcept;
BOOL lmlongpath_GetFileAttributesExW(const wchar_t* ruta, WIN32_FILE_ATTRIBUTE_DATA* datos) noexcept;
manija_fichero lmlongpath_CreateFileW(const wchar_t* ruta, DWORD acceso, DWORD compartir,
                                      SECURITY_ATTRIBUTES* seguridad, DWORD disposicion, DWORD indicadores,
                                      HANDLE plantilla, DWORD* error_out) noexcept;
BOOL lmlongpath_DeleteFileW(const wchar_t* ruta, DWORD* error_out) noexcept;
BOOL lmlongpath_CreateDirectoryW(const wchar_t* ruta, SECURITY_ATTRIBUTES* seguridad,
                                 DWORD* error_out) noexcept;
BOOL lmlongpath_RemoveDirectoryW(const wchar_t* ruta, DWORD* error_out) noexcept;
// Never replaces an existing target (ERROR_ALREADY_EXISTS).
BOOL lmlongpath_RenameFileW(const wchar_t* antigua, const wchar_t* nueva, DWORD* error_out) noexcept;
BOOL lmlongpath_MoveFileW(const wchar_t* origen, const wchar_t* destino, DWORD indicadores) noexcept;

// A search; `solo_nombres` leaves out the short names and asks for large steps (for listings that use neither).
manija_busqueda lmlongpath_FindFirstFileW(const wchar_t* patron, WIN32_FIND_DATAW* datos,
                                          bool solo_nombres = false) noexcept;

DWORD lmlongpath_GetShortPathNameW(const wchar_t* ruta, wchar_t* destino, DWORD sitio) noexcept;
DWORD lmlongpath_GetLongPathNameW(const wchar_t* ruta, wchar_t* destino, DWORD sitio) noexcept;

// The path without an extended-length prefix (`\\?\C:\x` is `C:\x`, `\\?\UNC\srv\x` is `\\srv\x`); any other path,
// that of a volume without a letter (`\\?\Volume{...}\x`) included, as it is.
cadena_w lmlongpath_desprepend_path(vista_w ruta, lugar donde = lugar::aqui());

}  // namespace lumodir
