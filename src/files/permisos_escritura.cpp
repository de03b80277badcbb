// See permisos_escritura.hpp.
#include "files/permisos_escritura.hpp"

#include "companions/directorio_abierto.hpp"
#include "companions/lmlongpath.hpp"
#include "companions/msglocal.hpp"
#include "companions/sin_dialogos.hpp"
#include "files/crea_directorios.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "paths/componentes.hpp"
#include "paths/rutas.hpp"

namespace interno {
namespace {

constexpr DWORD acceso_de_prueba = GENERIC_READ | GENERIC_WRITE;
constexpr DWORD a_solas = 0;  // a file that is open in another program counts as not writable

// A file system may refuse the right to delete to somebody who may create.
bool i_puede_ser_por_borrar(DWORD codigo) noexcept {
    return codigo == ERROR_ACCESS_DENIED || codigo == ERROR_NOT_SUPPORTED ||
           codigo == ERROR_INVALID_PARAMETER;
}

unsigned long long i_numero_de(const ruta_fijada& fichero) noexcept {
    const fichero_abierto abierto = lmlongpath_CreateFileW(
        fichero, FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING,
        FILE_FLAG_OPEN_REPARSE_POINT);
    return abierto.valida() ? i_numero(abierto.get()) : 0;
}

bool i_se_ira_al_cerrar(HANDLE creado) noexcept {
    FILE_DISPOSITION_INFO borrado = {TRUE};
    return sistema.SetFileInformationByHandle(creado, FileDispositionInfo, &borrado, sizeof borrado) != FALSE;
}

// Creates what is missing and takes it away again by the handle that made it: whoever puts a file of his own there
// meanwhile keeps it. Where the mark is refused, the name is all there is to delete by: if it still names that file.
motivo i_prueba_a_crear(const ruta_fijada& fichero) {
    const sin_dialogos callado;
    fichero_abierto creado = lmlongpath_CreateFileW(fichero, acceso_de_prueba | DELETE, a_solas, CREATE_NEW);
    if (i_puede_ser_por_borrar(creado.codigo)) {
        creado = lmlongpath_CreateFileW(fichero, acceso_de_prueba, a_solas, CREATE_NEW);
    }
    if (!creado.valida()) {
        return strgetlasterror_texto_cod_error(creado.codigo);
    }
    const unsigned long long numero = i_se_ira_al_cerrar(creado.get()) ? 0 : i_numero(creado.get());
    creado.cierra();
    if (numero != 0 && i_numero_de(fichero) == numero) {
        lmlongpath_DeleteFileW(fichero);
    }
    return {};
}

// No directory is the current one, as a bare drive is that of the drive: neither is the root, which joining a name to
// them would make of them.
cadena_w i_directorio_de_sonda(vista_w directorio) {
    const bool es_actual = directorio.empty() || directorio.back() == L':';
    return concatena<wchar_t>({directorio, es_actual ? vista_w(L".") : vista_w()});
}

bool i_se_crea_una_sonda(const ruta_fijada& directorio) {
    const cadena_w principio = i_concatena_directorios(vista_w(directorio.c_str()), L"~lumo~~_");
    const cadena_w sonda = copiaforu_nousar_formatea(L"%s%lu.tmp", {principio, ::GetCurrentProcessId()});
    return i_prueba_escritura(sonda.c_str()).es_nula();
}

// What leads back out of a directory does not want that directory made: the system's form has it no longer. A NULL string
// when the system cannot tell that form.
cadena_w i_con_retrocesos_resueltos(const ruta_fijada& directorio) {
    const vista_w forma(directorio.c_str());
    return forma.find(L"..") == vista_w::npos ? cadena_w(forma)
                                              : lmlongpath_forma_completa_si_se_sabe(directorio);
}

}  // namespace

motivo i_prueba_escritura(const ruta_fijada& fichero) noexcept {
    const existencia que_hay = i_existencia(fichero);
    if (que_hay.es_de_solo_lectura()) {
        return i_mensaje(i_msg_404523_fichero_sin_permiso_de_escritura);
    }
    if (que_hay.falta()) {
        return i_prueba_a_crear(fichero);
    }
    // What cannot be told to be missing is opened, never created.
    const fichero_abierto abierto = lmlongpath_CreateFileW(fichero, acceso_de_prueba, a_solas);
    return abierto.valida() ? motivo() : strgetlasterror_texto_cod_error(abierto.codigo);
}

motivo i_prueba_escritura_en_directorio(vista_w directorio, vista_w mostrado, bool se_crea) noexcept {
    const cadena_w de_sonda = i_directorio_de_sonda(directorio);
    const cadena_w forma = i_con_retrocesos_resueltos(de_sonda.c_str());
    const ruta_fijada fijado(forma.c_str());
    if (forma.es_nula() || (se_crea && !i_crea_directorios(fijado.c_str(), true, false))) {
        return i_mensaje(i_msg_53948_no_se_puede_crear_directorio, {mostrado});
    }
    if (!i_se_crea_una_sonda(fijado)) {
        return i_mensaje(i_msg_404522_sin_permiso_en_directorio, {mostrado});
    }
    return {};
}

motivo i_prueba_escritura_junto_a(vista_w fichero) noexcept {
    const vista_w directorio = i_directorio_de_fichero(fichero);
    cadena_w mostrado(directorio);
    i_suprime_barra_final_si_hay(mostrado);
    // What is called ".." lies in the directory above that.
    const bool es_retroceso = fichero.substr(directorio.size()) == L"..";
    const cadena_w de_retroceso = concatena<wchar_t>({fichero, L"\\.."});
    // No directory at all needs no creation; that of a drive is not the process's.
    const vista_w actual = fichero.substr(0, fichero.find(L':') == 1 ? 2 : 0);
    return i_prueba_escritura_en_directorio(es_retroceso         ? de_retroceso.ver()
                                            : directorio.empty() ? actual
                                                                 : directorio,
                                            mostrado.ver(), !directorio.empty());
}

bool prueba_escritura_en_directorio(const wchar_t* directorio) noexcept {
    const cadena_w de_sonda = i_directorio_de_sonda(a_vista(directorio));
    return i_se_crea_una_sonda(de_sonda.c_str());
}

}  // namespace interno
