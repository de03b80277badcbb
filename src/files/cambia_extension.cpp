// See cambia_extension.hpp.
#include "files/cambia_extension.hpp"

#include "companions/directorio_abierto.hpp"
#include "companions/lmlongpath.hpp"
#include "companions/sin_dialogos.hpp"
#include "files/borrado.hpp"
#include "files/renombra_protege.hpp"
#include "listings/listas_ficheros.hpp"
#include "paths/rutas.hpp"
#include "paths/split_makepath.hpp"

namespace interno {
namespace {

vista_w i_sin_punto(vista_w extension) noexcept {
    return extension.substr(empieza_por(extension, L".") ? 1 : 0);
}

// Whether two names are those of one file, where the system tells.
bool i_mismo_fichero(const ruta_fijada& a, const ruta_fijada& b) noexcept {
    const sin_dialogos callado;
    BY_HANDLE_FILE_INFORMATION datos[2];
    const ruta_fijada* rutas[] = {&a, &b};
    for (int i = 0; i < 2; ++i) {
        const fichero_abierto abierto = lmlongpath_CreateFileW(
            *rutas[i], FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
            OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS);
        if (!abierto.valida() || !sistema.GetFileInformationByHandle(abierto.get(), &datos[i])) {
            return false;
        }
    }
    const bool se_sabe = (datos[0].nFileIndexHigh | datos[0].nFileIndexLow) != 0;
    return se_sabe && datos[0].dwVolumeSerialNumber == datos[1].dwVolumeSerialNumber &&
           datos[0].nFileIndexHigh == datos[1].nFileIndexHigh &&
           datos[0].nFileIndexLow == datos[1].nFileIndexLow;
}

// A directory, as messages show it and as the system is given it: to the letter, so that a name put behind it is
// nothing but that name.
class directorio_literal {
public:
    explicit directorio_literal(const wchar_t* dado)
        : dado_(dado),
          mostrado_(i_path_de_lista<wchar_t>({}, dado_)),
          literal_(lmlongpath_forma_literal(dado)) {}

    bool se_sabe() const noexcept { return !literal_.es_nula(); }
    cadena_w literal(vista_w nombre) const {
        return concatena<wchar_t>({literal_, i_separador_que_falta(literal_.ver()), nombre});
    }
    cadena_w mostrado(vista_w nombre) const {
        // A record of a root has lost its separator; a bare drive never had one.
        return concatena<wchar_t>(
            {mostrado_, acaba_en(dado_, L":") ? vista_w() : i_separador_que_falta(mostrado_.ver()), nombre});
    }

private:
    vista_w dado_;
    cadena_w mostrado_;
    cadena_w literal_;
};

// One file of the directory, and what becomes of it.
class cambio {
public:
    cambio(const directorio_literal& directorio, vista_w nombre, vista_w antigua, vista_w nueva)
        : nombre_antiguo_(i_compone(nombre, antigua)),
          nombre_nuevo_(i_compone(nombre, nueva)),
          leido_(sin_final_recortable(nombre_nuevo_.ver())),
          antiguo_mostrado_(directorio.mostrado(nombre_antiguo_)),
          nuevo_mostrado_(directorio.mostrado(nombre_nuevo_)),
          origen_(antiguo_mostrado_.c_str(), directorio.literal(nombre_antiguo_)),
          destino_(nuevo_mostrado_.c_str(), directorio.literal(leido_)) {}

    void hace() {
        if (leido_ == nombre_antiguo_.ver()) {
            return;  // the same name by another spelling
        }
        const DWORD negativa = i_negativa();
        if (negativa == ERROR_SUCCESS && i_hay_que_borrar()) {
            i_borra_fichero(destino_, nullptr, true);
        }
        i_renombra_fichero(origen_, destino_, negativa);
    }

private:
    static cadena_w i_compone(vista_w nombre, vista_w extension) {
        return i_makepath<wchar_t>({}, {}, division<wchar_t>(nombre, false).nombre, extension);
    }
    // Why nothing is done: before anything has been deleted for it.
    DWORD i_negativa() const {
        if (leido_.empty() || leido_.find_first_of(L"\\/:") != vista_w::npos) {
            return ERROR_INVALID_NAME;
        }
        const DWORD de_origen = i_codigo_si_lleva_a_otro_sitio(origen_);
        if (de_origen != ERROR_SUCCESS && !i_dice_que_falta(de_origen)) {
            return de_origen;
        }
        // Of the name that is to be free any other code may pass.
        return i_codigo_si_lleva_a_otro_sitio(destino_) == ERROR_CANT_ACCESS_FILE
                   ? DWORD{ERROR_CANT_ACCESS_FILE}
                   : DWORD{ERROR_SUCCESS};
    }
    bool i_hay_que_borrar() const noexcept {
        return leido_.size() == nombre_nuevo_.size() && !i_mismo_nombre(leido_, nombre_antiguo_) &&
               i_existencia(origen_).hay() && i_hay_entrada_de_ese_nombre() &&
               !i_mismo_fichero(origen_, destino_);
    }
    bool i_hay_entrada_de_ese_nombre() const noexcept {
        if (leido_.find_first_of(L"*?<>\"") != vista_w::npos) {
            return false;  // the system would search for others
        }
        WIN32_FIND_DATAW entrada;
        return lmlongpath_FindFirstFileW(destino_, entrada, detalle::sin_nombre_corto).valida() &&
               i_mismo_nombre(i_nombre_de_entrada(entrada), leido_);
    }

    cadena_w nombre_antiguo_;
    cadena_w nombre_nuevo_;
    vista_w leido_;
    cadena_w antiguo_mostrado_;
    cadena_w nuevo_mostrado_;
    ruta_fijada origen_;
    ruta_fijada destino_;
};

}  // namespace

void i_cambia_extension(const wchar_t* dado, vista_w antigua, vista_w nueva) {
    antigua = i_sin_punto(antigua);
    nueva = i_sin_punto(nueva);
    const directorio_literal directorio(dado);
    if (antigua == nueva || !directorio.se_sabe()) {
        return;
    }
    const nombres_en_curso<wchar_t> ficheros = i_nombres_de_lista(
        directorio.literal(comodin_de_todo_u).c_str(), i_es_fichero, filtro_extension(antigua));
    for (std::size_t i = 0; i < ficheros.num(); ++i) {
        cambio(directorio, ficheros.ver(i), antigua, nueva).hace();
    }
}

}  // namespace interno
