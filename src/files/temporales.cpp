// Temporary and unique files: empty files that the system names and reserves on disk, in the temporary directory or
// in a given one.
//
// Promises: a file that is handed out exists, is empty and was never handed out to anybody else, however many
// processes ask at once (the system creates it, and a renaming never replaces); what could not be used is deleted.
// Cannot promise: that the fallback for a missing temporary directory exists: it is neither checked nor created.
// Checked by tests/files/temporales_win32_test.cpp and unicos_win32_test.cpp.
#include <algorithm>

#include "cdir.h"
#include "companions/error_interno.hpp"
#include "companions/lmaviso.hpp"
#include "companions/lmlongpath.hpp"
#include "files/borrado.hpp"
#include "files/programa.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "lumodir.h"
#include "lumoreg.h"
#include "paths/componentes.hpp"
#include "paths/rutas.hpp"
#include "paths/split_makepath.hpp"

namespace lumodir {
namespace {

constexpr DWORD sitio_directorio = MAX_PATH;  // units, terminator included
constexpr unsigned intentos_por_prefijo = 21;
constexpr unsigned max_candidatos = 150;       // of a unique file
constexpr unsigned candidatos_con_letra = 20;  // 'A' to 'T'; the rest share '0'
constexpr const wchar_t* prefijo_primero = L"LUMO";
constexpr const wchar_t* prefijo_segundo = L"LMR";
constexpr vista_w extension_del_sistema = L"tmp";  // of the files that the system names

struct nombre_de_error {
    DWORD codigo;
    const wchar_t* nombre;
};
constexpr nombre_de_error nombres_de_error[] = {
    {ERROR_FILE_NOT_FOUND, L"ERROR_FILE_NOT_FOUND"},
    {ERROR_PATH_NOT_FOUND, L"ERROR_PATH_NOT_FOUND"},
    {ERROR_TOO_MANY_OPEN_FILES, L"ERROR_TOO_MANY_OPEN_FILES"},
    {ERROR_ACCESS_DENIED, L"ERROR_ACCESS_DENIED"},
    {ERROR_NOT_ENOUGH_MEMORY, L"ERROR_NOT_ENOUGH_MEMORY"},
    {ERROR_INVALID_DRIVE, L"ERROR_INVALID_DRIVE"},
    {ERROR_WRITE_PROTECT, L"ERROR_WRITE_PROTECT"},
    {ERROR_BAD_UNIT, L"ERROR_BAD_UNIT"},
    {ERROR_GEN_FAILURE, L"ERROR_GEN_FAILURE"},
};

cadena_w i_nombre_de_error(DWORD codigo) {
    for (const nombre_de_error& fila : nombres_de_error) {
        if (fila.codigo == codigo) {
            return cadena_w(a_vista(fila.nombre));
        }
    }
    return copiaforu_nousar_formatea(L"%u", {codigo});
}

// The user's local-settings folder or, when the registry does not tell it, the Windows directory.
cadena_w i_directorio_de_respaldo(lugar donde) {
    wchar_t* carpeta = nullptr;
    if (lumoreg_lee_cadena_u(LUMOREG_RAIZ_CURRENT_USER,
                             L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders",
                             L"Local Settings", &carpeta) == CIERTO) {
        return cadena_w::adopta(carpeta);
    }
    wchar_t bufer[sitio_directorio] = {};
    const UINT ret = sistema.GetWindowsDirectoryW(bufer, sitio_directorio);
    i_comprueba(ret != 0, "ret != 0", donde);
    return ret < sitio_directorio ? cadena_w(vista_w(bufer, ret), donde) : cadena_w(vista_w(), donde);
}

cadena_w i_directorio_temporal(lugar donde) {
    wchar_t bufer[sitio_directorio] = {};
    const DWORD longitud = sistema.GetTempPathW(sitio_directorio, bufer);
    i_comprueba(longitud < sitio_directorio, "longitud < _MAX_PATH", donde);
    // One that the system cannot tell, or that does not fit, counts as missing.
    const bool cabe = longitud > 0 && longitud < sitio_directorio;
    if (cabe && cdir_existe_directorio_UNICODE(bufer) == CIERTO) {
        return cadena_w(vista_w(bufer, longitud), donde);
    }
    const cadena_w respaldo = i_directorio_de_respaldo(donde);
    cadena_w directorio =
        concatena<wchar_t>({respaldo.ver().substr(0, sitio_directorio - 1), L"\\temp"}, donde);
    directorio.acorta(sitio_directorio - 1);
    return directorio;
}

// A new empty file of a name that the system chooses; a NULL string on failure, the code being the reason.
cadena_w i_fichero_del_sistema(const wchar_t* directorio, const wchar_t* prefijo, DWORD* codigo,
                               lugar donde) {
    // The call knows nothing of the room it writes to, and not every system refuses a directory that is too long.
    cadena_w nombre = cadena_w::con_sitio(a_vista(directorio).size() + MAX_PATH, donde);
    nombre.datos()[0] = L'\0';
    const UINT unico = sistema.GetTempFileNameW(directorio, prefijo, 0, nombre.datos());
    *codigo = unico == 0 ? ::GetLastError() : ERROR_SUCCESS;
    if (unico == 0) {
        return {};
    }
    nombre.acorta(a_vista(nombre.c_str()).size());
    return nombre;
}

// The same, insisting; the code is that of the last failure.
cadena_w i_insiste_con_prefijo(const cadena_w& directorio, const wchar_t* prefijo, DWORD* codigo,
                               lugar donde) {
    cadena_w nombre;
    for (unsigned i = 0; i < intentos_por_prefijo && nombre.es_nula(); ++i) {
        nombre = i_fichero_del_sistema(directorio.c_str(), prefijo, codigo, donde);
    }
    return nombre;
}

// What happened, why, and what to do about it.
cadena_w i_tres_frases(const cadena_w& directorio, DWORD codigo, const cadena_w& remedio) {
    const cadena_w hecho = i_mensaje(i_msg_385690_no_se_puede_crear_temporal, {directorio});
    const cadena_w causa = i_mensaje(i_msg_385691_codigo_de_error_de_windows, {i_nombre_de_error(codigo)});
    return copiaforu_nousar_formatea(L"%s\n%s\n%s", {hecho, causa, remedio});
}

cadena_w i_crea_fichero_temporal(lugar donde) {
    const cadena_w directorio = i_directorio_temporal(donde);
    DWORD codigo = ERROR_SUCCESS;
    cadena_w nombre = i_insiste_con_prefijo(directorio, prefijo_primero, &codigo, donde);
    if (nombre.es_nula()) {
        // In service mode too: nothing that needs a temporary file works until somebody mends this.
        const cadena_w aviso = i_tres_frases(
            directorio, codigo, i_mensaje(i_msg_402847_borrar_ficheros_o_modificar_temp, {directorio}));
        lmaviso_aviso_interno_como_error_u(aviso.c_str());
        nombre = i_insiste_con_prefijo(directorio, prefijo_segundo, &codigo, donde);
    }
    if (nombre.es_nula()) {
        error_interno_liberando_mensaje_u(
            i_tres_frases(directorio, codigo, i_mensaje(i_msg_385692_modificar_variable_temp)), donde);
        return cadena_w(vista_w(), donde);
    }
    return i_path_largo(nombre.c_str(), donde);
}

// A file of the system's with another extension. Whoever else looks for a name at the same time gets another: the
// system never creates the same file twice, and a renaming never replaces, which makes it the test of existence too.
class fichero_unico {
public:
    fichero_unico(const wchar_t* directorio, vista_w extension, lugar donde)
        : directorio_(directorio), extension_(extension), donde_(donde) {}
    fichero_unico(const fichero_unico&) = delete;
    fichero_unico& operator=(const fichero_unico&) = delete;
    // What could not be used goes at the end: while it stands, the system cannot offer it again.
    ~fichero_unico() {
        for (std::size_t i = 0; i < descartados_->num(); ++i) {
            i_borra_fichero(descartados_->texto(i), nullptr, CIERTO);
        }
    }

    cadena_w crea() {
        i_comprueba(a_vista(directorio_).size() < MAX_PATH, "longitud < _MAX_PATH", donde_);
        cadena_w candidato;
        for (unsigned contador = 0; contador < max_candidatos; ++contador) {
            cadena_w temporal = i_temporal(contador);
            if (temporal.es_nula()) {
                return cadena_w(vista_w(), donde_);
            }
            candidato = i_makepath<wchar_t>({}, directorio_, i_nombre_base_fichero(temporal.ver()),
                                            extension_, donde_);
            if (i_es_la_del_sistema() || i_renombra(temporal, candidato)) {
                return candidato;
            }
            descartados_->anade(std::move(temporal), donde_);
        }
        error_interno("contador < 150", donde_);
        return candidato;
    }

private:
    cadena_w i_temporal(unsigned contador) {
        wchar_t prefijo[] = L"LUMO";
        prefijo[2] = contador < candidatos_con_letra ? static_cast<wchar_t>(L'A' + contador) : L'0';
        DWORD codigo;
        cadena_w temporal = i_fichero_del_sistema(directorio_, prefijo, &codigo, donde_);
        i_comprueba_con(!temporal.es_nula(), "resp != 0", directorio_, donde_);
        return temporal;
    }
    bool i_es_la_del_sistema() const noexcept {
        const bool con_punto = !extension_.empty() && extension_.front() == L'.';
        return iguales_sin_caja(extension_.substr(con_punto ? 1 : 0), extension_del_sistema);
    }
    static bool i_renombra(const cadena_w& temporal, const cadena_w& candidato) {
        return lmlongpath_RenameFileW(temporal.c_str(), candidato.c_str(), nullptr) != FALSE;
    }

    const wchar_t* directorio_;
    vista_w extension_;
    lugar donde_;
    objeto<ArrCADENA_u> descartados_ = objeto<ArrCADENA_u>::crea();
};

cadena_w i_crea_fichero_unico(const wchar_t* directorio, vista_w extension, lugar donde) {
    return fichero_unico(directorio, extension, donde).crea();
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

wchar_t* lumodir_dameDirectorioTemporal(void) {
    const cadena_w directorio = i_directorio_temporal(lugar::aqui());
    return i_path_largo(directorio.c_str()).suelta();
}

wchar_t* lumodir_creaFicheroTemporal(void) {
    return i_crea_fichero_temporal(lugar::aqui()).suelta();
}

wchar_t* lumodir_creaFicheroTemporalConExt(const wchar_t* ext) {
    const lugar donde = lugar::aqui();
    if (!i_comprueba(ext != nullptr, "(ext) != NULL", donde)) {
        return cadena_w(vista_w(), donde).suelta();
    }
    if (iguales_sin_caja(vista_w(ext), extension_del_sistema)) {
        return lumodir_creaFicheroTemporal();
    }
    const cadena_w directorio = i_directorio_temporal(donde);
    const cadena_w fichero = i_crea_fichero_unico(directorio.c_str(), ext, donde);
    return i_path_largo(fichero.c_str(), donde).suelta();
}

wchar_t* lumodir_creaFicheroUnicoEnDirectorio(const wchar_t* directorioTemporal, const wchar_t* ext) {
    const lugar donde = lugar::aqui();
    const bool hay_directorio =
        i_comprueba(directorioTemporal != nullptr, "(directorioTemporal) != NULL", donde);
    if (!i_comprueba(ext != nullptr, "(ext) != NULL", donde) || !hay_directorio) {
        return cadena_w(vista_w(), donde).suelta();
    }
    return i_crea_fichero_unico(directorioTemporal, ext, donde).suelta();
}

wchar_t* lumodir_creaFicheroTemporalEnDirectorio(const wchar_t* directorioTemporal, const wchar_t* nombre) {
    const vista_w directorio = a_vista(directorioTemporal);
    if (directorio.empty() || a_vista(nombre).empty()) {
        return nullptr;
    }
    cdir_crea_directorios_del_path_UNICODE(directorioTemporal);
    return i_concatena_directorios<wchar_t>(directorio, a_vista(nombre)).suelta();
}
