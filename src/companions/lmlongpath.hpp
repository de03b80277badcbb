// The long-path library: the Windows calls on paths of any length. A path that Windows would refuse for its
// length is made full and given the extended-length prefix.
//
// Promises: a path that depends on the current directory is made full once, where its `ruta_fijada` is made: whoever
// changes the current directory meanwhile (a question, a callback, another thread) redirects nothing. Each call
// returns what the Windows function of its name returns and leaves its last error in place; where there is an
// `error_out`, it receives the code of a failure and is left alone after a success. A path that is absolute and
// short costs no call besides the one asked for, a relative one a single call for all that is done with it.
// Where the system would follow a link (Wine), a deletion or a renaming fails instead, with ERROR_CANT_ACCESS_FILE.
// Cannot promise: anything about a share that is not there.
// Checked by tests/companions/lmlongpath_win32_test.cpp.
#pragma once

#include <optional>
#include <utility>

#include "companions/cadena.hpp"
#include "companions/limites.hpp"
#include "companions/sistema.hpp"

namespace interno {

// A path tied to its place: the text as the caller gave it, for messages, reports and results, and its full form, for
// the system. An operation of several calls makes one and hands it to each; a call alone makes its own. The given
// text must outlive it.
class ruta_fijada {
public:
    enum class uso { acceso, busqueda };  // a search keeps the points at the end of its pattern

    // NOLINTNEXTLINE(google-explicit-constructor): a text is a path for the time of one call
    ruta_fijada(const wchar_t* dada, uso para = uso::acceso, lugar donde = lugar::aqui());
    // For a form that was made elsewhere: of a name in a directory that is fixed already.
    ruta_fijada(const wchar_t* dada, cadena_w forma) noexcept
        : dada_(dada), texto_(forma.c_str()), larga_(std::move(forma)) {}
    ruta_fijada(const ruta_fijada&) = delete;
    ruta_fijada& operator=(const ruta_fijada&) = delete;
    // It may end between a call and the reading of its error code.
    ~ruta_fijada() {
        if (!larga_.es_nula()) {
            const conserva_ultimo_error conserva;
            larga_.vacia();
        }
    }

    const wchar_t* dada() const noexcept { return dada_; }
    // What the system is given.
    const wchar_t* c_str() const noexcept { return texto_; }
    // For an answer that shows the path: as it was given, unless the system would refuse it so.
    const wchar_t* dada_si_cabe() const noexcept;

private:
    static constexpr std::size_t sitio_corto = MAX_PATH;

    void i_fija(const wchar_t* de, lugar donde);
    void i_devuelve_nombre(vista_w nombre, lugar donde);

    const wchar_t* dada_;
    const wchar_t* texto_;
    cadena_w larga_;
    wchar_t corta_[sitio_corto];  // a full form that needs no block
};

// Whether something bears a name. What the system cannot tell is neither there nor missing.
struct existencia {
    enum class estado { hay, falta, no_se_sabe };

    estado cual;
    DWORD codigo;     // why it is not known to be there; 0 when it is
    DWORD atributos;  // INVALID_FILE_ATTRIBUTES unless it is there

    bool hay() const noexcept { return cual == estado::hay; }
    bool falta() const noexcept { return cual == estado::falta; }
    bool es_directorio() const noexcept { return hay() && (atributos & FILE_ATTRIBUTE_DIRECTORY) != 0; }
    bool es_de_solo_lectura() const noexcept { return hay() && (atributos & FILE_ATTRIBUTE_READONLY) != 0; }
};

// One call. A second one, for the entry in its directory, when something may stand there that cannot be asked itself
// (held without sharing, no right to look at it).
existencia i_existencia(const ruta_fijada& ruta) noexcept;

// The codes with which the system says that there is no such name; any other failure says nothing about that.
bool i_dice_que_falta(DWORD codigo) noexcept;

// Access modes of lmlongpath_waccess, as the C runtime numbers them.
inline constexpr unsigned acceso_existencia = 0;
inline constexpr unsigned acceso_escritura = 2;
inline constexpr unsigned acceso_lectura = 4;
bool lmlongpath_waccess(const ruta_fijada& ruta, unsigned modo) noexcept;

// Permission modes of lmlongpath_wchmod (_S_IREAD, _S_IWRITE); 0 on success, -1 on failure.
inline constexpr int modo_lectura = 0x100;
inline constexpr int modo_escritura = 0x80;
int lmlongpath_wchmod(const ruta_fijada& ruta, int modo) noexcept;

DWORD lmlongpath_GetFileAttributesW(const ruta_fijada& ruta) noexcept;
BOOL lmlongpath_GetFileAttributesExW(const ruta_fijada& ruta, WIN32_FILE_ATTRIBUTE_DATA* datos) noexcept;
// The size of a file; nothing, and the code, when the system does not tell it. What hosts are told then:
inline constexpr unsigned long long sin_tamanyo = ~0ull;
std::optional<unsigned long long> i_tamanyo(const ruta_fijada& ruta, DWORD* error_out) noexcept;
manija_fichero lmlongpath_CreateFileW(const ruta_fijada& ruta, DWORD acceso, DWORD compartir,
                                      SECURITY_ATTRIBUTES* seguridad, DWORD disposicion, DWORD indicadores,
                                      HANDLE plantilla, DWORD* error_out) noexcept;
BOOL lmlongpath_DeleteFileW(const ruta_fijada& ruta, DWORD* error_out) noexcept;
BOOL lmlongpath_CreateDirectoryW(const ruta_fijada& ruta, SECURITY_ATTRIBUTES* seguridad,
                                 DWORD* error_out) noexcept;
BOOL lmlongpath_RemoveDirectoryW(const ruta_fijada& ruta, DWORD* error_out) noexcept;
// Never replaces an existing target (ERROR_ALREADY_EXISTS).
BOOL lmlongpath_RenameFileW(const ruta_fijada& antigua, const ruta_fijada& nueva, DWORD* error_out) noexcept;
BOOL lmlongpath_MoveFileW(const ruta_fijada& origen, const ruta_fijada& destino, DWORD indicadores) noexcept;

// A search; `solo_nombres` leaves out the short names and asks for large steps (for listings that use neither).
manija_busqueda lmlongpath_FindFirstFileW(const ruta_fijada& patron, WIN32_FIND_DATAW* datos,
                                          bool solo_nombres = false) noexcept;

// Of a relative path a relative form.
DWORD lmlongpath_GetShortPathNameW(const wchar_t* ruta, wchar_t* destino, DWORD sitio) noexcept;
DWORD lmlongpath_GetLongPathNameW(const wchar_t* ruta, wchar_t* destino, DWORD sitio) noexcept;

// With a prefix of the system's, long (`\\?\`) or of devices (`\\.\`), a path is taken as it is.
bool i_lleva_prefijo(vista_w ruta) noexcept;

// Letter case of any alphabet aside, as file systems compare.
bool i_mismo_nombre(vista_w a, vista_w b) noexcept;

// Relative parts resolved, "/" turned into "\"; the path as it is when the system cannot tell, or takes it literally
// (`\\?\`).
cadena_w lmlongpath_forma_completa(const ruta_fijada& ruta, lugar donde = lugar::aqui());
// The full form with the extended-length prefix, whatever its length: names put behind it are taken to the letter,
// final blanks and points and names of devices included. A NULL string when the system cannot tell.
cadena_w lmlongpath_forma_literal(const wchar_t* ruta, lugar donde = lugar::aqui());

// The path without an extended-length prefix (`\\?\C:\x` is `C:\x`, `\\?\UNC\srv\x` is `\\srv\x`); any other path,
// that of a volume without a letter (`\\?\Volume{...}\x`) included, as it is.
cadena_w lmlongpath_desprepend_path(vista_w ruta, lugar donde = lugar::aqui());

}  // namespace interno
