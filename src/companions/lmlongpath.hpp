// The long-path library: the Windows calls on paths of any length, each tied to its place (ruta_fijada.hpp).
//
// Promises: each call tells how it ended, and leaves the code of a failure as the thread's last error too. A path that
// is absolute and short costs no call besides the one asked for, a relative one a single call for all that is done with it.
// Where the system would follow a link (Wine), a deletion, a renaming or a change of attributes fails instead, with
// ERROR_CANT_ACCESS_FILE.
// Cannot promise: anything about a share that is not there.
// Checked by tests/companions/lmlongpath_win32_test.cpp.
#pragma once

#include "companions/limites.hpp"
#include "companions/ruta_fijada.hpp"

namespace interno {

// One call. A second one, for the entry in its directory, when something may stand there that cannot be asked itself
// (held without sharing, no right to look at it).
existencia i_existencia(const ruta_fijada& ruta) noexcept;

// The codes with which the system says that there is no such name; any other failure says nothing about that.
bool i_dice_que_falta(DWORD codigo) noexcept;

// How an attempt ended. A failure stays one even when the system has no code for it.
struct desenlace {
    bool hecho;
    DWORD codigo;  // of a failure

    // Of a failed deletion.
    bool ya_no_esta() const noexcept { return i_dice_que_falta(codigo); }
};

// What the system tells of a file, or why it tells nothing.
struct datos_de_fichero : WIN32_FILE_ATTRIBUTE_DATA {
    DWORD codigo;

    bool leidos() const noexcept { return codigo == ERROR_SUCCESS; }
};

// How much is asked about each entry of a search: short names cost the system a second look-up. Without them, large
// steps are asked for.
enum class detalle { todo, sin_nombre_corto };

// Access modes of lmlongpath_waccess, as the C runtime numbers them.
inline constexpr unsigned acceso_existencia = 0;
inline constexpr unsigned acceso_escritura = 2;
inline constexpr unsigned acceso_lectura = 4;
bool lmlongpath_waccess(const ruta_fijada& ruta, unsigned modo) noexcept;
bool lmlongpath_wchmod(const ruta_fijada& ruta, int modo) noexcept;

DWORD lmlongpath_GetFileAttributesW(const ruta_fijada& ruta) noexcept;
datos_de_fichero lmlongpath_GetFileAttributesExW(const ruta_fijada& ruta) noexcept;
fichero_abierto lmlongpath_CreateFileW(const ruta_fijada& ruta, DWORD acceso, DWORD compartir,
                                       DWORD disposicion = OPEN_EXISTING, DWORD indicadores = 0) noexcept;
desenlace lmlongpath_DeleteFileW(const ruta_fijada& ruta) noexcept;
desenlace lmlongpath_CreateDirectoryW(const ruta_fijada& ruta) noexcept;
desenlace lmlongpath_RemoveDirectoryW(const ruta_fijada& ruta) noexcept;
// Never replaces an existing target (ERROR_ALREADY_EXISTS).
desenlace lmlongpath_RenameFileW(const ruta_fijada& antigua, const ruta_fijada& nueva) noexcept;
desenlace lmlongpath_MoveFileW(const ruta_fijada& origen, const ruta_fijada& destino,
                               DWORD indicadores) noexcept;
manija_busqueda lmlongpath_FindFirstFileW(const ruta_fijada& patron, WIN32_FIND_DATAW& primera,
                                          detalle cuanto) noexcept;

// Of a relative path a relative form; a NULL string when the system has none.
cadena_w lmlongpath_GetShortPathNameW(const wchar_t* ruta) noexcept;
cadena_w lmlongpath_GetLongPathNameW(const wchar_t* ruta) noexcept;

}  // namespace interno
