// See temporales.hpp.
#include "files/temporales.hpp"

#include "companions/arr.hpp"
#include "companions/error_interno.hpp"
#include "companions/lmaviso.hpp"
#include "companions/lmlongpath.hpp"
#include "companions/sin_dialogos.hpp"
#include "files/borrado.hpp"
#include "files/programa.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "paths/componentes.hpp"
#include "paths/rutas.hpp"
#include "paths/split_makepath.hpp"
#include "system/lumoreg_valores.hpp"

namespace interno {
namespace {

constexpr DWORD sitio_directorio = MAX_PATH;  // units, terminator included
// Units, without a final separator, that leave room for a name; in a longer directory the system gives none.
constexpr std::size_t max_directorio = MAX_PATH - 14;
// While somebody looks at the new file: so often under its name, and in all; who may not rename at all is not kept
// waiting at each of the names.
constexpr unsigned intentos_por_nombre = 6;
constexpr unsigned max_esperas = 15;
constexpr unsigned long espera_ms = 50;
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

bool i_deja_sitio(vista_w directorio) noexcept {
    return directorio.size() <= max_directorio + (acaba_en_separador(directorio) ? 1 : 0);
}

// The user's local-settings folder or, when the registry does not tell it, the Windows directory.
cadena_w i_directorio_de_respaldo() {
    cadena_w carpeta = i_lee_cadena(apertura::en_cualquiera(LUMOREG_RAIZ_CURRENT_USER),
                                    L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders",
                                    L"Local Settings");
    if (!carpeta.es_nula()) {
        return carpeta;
    }
    wchar_t bufer[sitio_directorio] = {};
    const UINT ret = sistema.GetWindowsDirectoryW(bufer, sitio_directorio);
    i_comprueba(ret != 0, "ret != 0");
    return ret < sitio_directorio ? cadena_w(vista_w(bufer, ret)) : cadena_w(vista_w());
}

cadena_w i_directorio_temporal_dado() {
    wchar_t bufer[sitio_directorio] = {};
    const DWORD longitud = sistema.GetTempPathW(sitio_directorio, bufer);
    i_comprueba(longitud < sitio_directorio, "longitud < _MAX_PATH");
    // One that the system cannot tell, or that leaves no room for a name, counts as missing.
    const bool cabe = longitud > 0 && longitud < sitio_directorio && i_deja_sitio(vista_w(bufer, longitud));
    if (cabe && i_existencia(bufer).hay()) {
        return cadena_w(vista_w(bufer, longitud));
    }
    const cadena_w respaldo = i_directorio_de_respaldo();
    cadena_w directorio = concatena<wchar_t>({respaldo.ver().substr(0, sitio_directorio - 1), L"\\temp"});
    directorio.acorta(sitio_directorio - 1);
    return directorio;
}

// A new empty file, or why there is none.
struct fichero_nuevo {
    cadena_w nombre;
    DWORD codigo;
};

// The system chooses the name.
fichero_nuevo i_fichero_del_sistema(const wchar_t* directorio, const wchar_t* prefijo) {
    if (!i_deja_sitio(a_vista(directorio))) {
        return {{}, ERROR_PATH_NOT_FOUND};
    }
    // Not every system ends a name that fills its room.
    wchar_t nombre[2 * MAX_PATH] = {};
    const sin_dialogos callado;
    if (sistema.GetTempFileNameW(directorio, prefijo, 0, nombre) == 0) {
        return {{}, ::GetLastError()};
    }
    return {cadena_w(vista_w(nombre).substr(0, MAX_PATH - 1)), ERROR_SUCCESS};
}

// The same, insisting; the code is that of the last failure.
fichero_nuevo i_insiste_con_prefijo(const ruta_fijada& directorio, const wchar_t* prefijo) {
    fichero_nuevo creado = {};
    for (unsigned i = 0; i < intentos_por_prefijo && creado.nombre.es_nula(); ++i) {
        creado = i_fichero_del_sistema(directorio.c_str(), prefijo);
    }
    return creado;
}

// What happened, why, and what to do about it.
cadena_w i_tres_frases(const cadena_w& directorio, DWORD codigo, const cadena_w& remedio) {
    const cadena_w hecho = i_mensaje(i_msg_385690_no_se_puede_crear_temporal, {directorio});
    const cadena_w causa = i_mensaje(i_msg_385691_codigo_de_error_de_windows, {i_nombre_de_error(codigo)});
    return copiaforu_nousar_formatea(L"%s\n%s\n%s", {hecho, causa, remedio});
}

// A file of the system's with another extension. Whoever else looks for a name at the same time gets another: the
// system never creates the same file twice, and a renaming never replaces, which makes it the test of existence too.
class fichero_unico {
public:
    fichero_unico(const wchar_t* directorio, vista_w extension)
        : directorio_(directorio), extension_(extension) {}
    fichero_unico(const fichero_unico&) = delete;
    fichero_unico& operator=(const fichero_unico&) = delete;
    // What could not be used goes at the end: while it stands, the system cannot offer it again.
    ~fichero_unico() {
        for (std::size_t i = 0; i < descartados_.num(); ++i) {
            i_borra_fichero(descartados_.texto(i), nullptr, true);
        }
    }

    cadena_w crea() {
        i_comprueba(a_vista(directorio_.dada()).size() < MAX_PATH, "longitud < _MAX_PATH");
        cadena_w candidato;
        for (unsigned contador = 0; contador < max_candidatos; ++contador) {
            cadena_w temporal = i_temporal(contador);
            if (temporal.es_nula()) {
                return cadena_w(vista_w());
            }
            const vista_w nombre = i_nombre_base_fichero(temporal.ver());
            candidato = i_candidato(directorio_.dada(), nombre);
            if (i_es_la_del_sistema() || i_renombra(temporal, i_candidato(directorio_.c_str(), nombre))) {
                return candidato;
            }
            descartados_.anade(std::move(temporal));
        }
        error_interno("contador < 150");
        return candidato;
    }

private:
    cadena_w i_temporal(unsigned contador) {
        wchar_t prefijo[] = L"LUMO";
        prefijo[2] = contador < candidatos_con_letra ? static_cast<wchar_t>(L'A' + contador) : L'0';
        cadena_w temporal = i_fichero_del_sistema(directorio_.c_str(), prefijo).nombre;
        i_comprueba_con(!temporal.es_nula(), "resp != 0", directorio_.dada());
        return temporal;
    }
    cadena_w i_candidato(const wchar_t* directorio, vista_w nombre) const {
        // A separator would make the root of a bare drive, whose current directory holds the file.
        const vista_w entero(directorio);
        const vista_w recortado = recorta_derecha(entero);
        return es_unidad_sola(recortado) ? i_makepath<wchar_t>(recortado, {}, nombre, extension_)
                                         : i_makepath<wchar_t>({}, entero, nombre, extension_);
    }
    bool i_es_la_del_sistema() const noexcept {
        return iguales_sin_caja(extension_.substr(empieza_por(extension_, L".") ? 1 : 0),
                                extension_del_sistema);
    }
    // A program that looks at every new file holds this one for a moment; another name would fare no better.
    bool i_renombra(const cadena_w& temporal, const cadena_w& candidato) {
        for (unsigned i = 1;; ++i) {
            const desenlace fin = lmlongpath_RenameFileW(temporal.c_str(), candidato.c_str());
            if (fin.hecho) {
                return true;
            }
            const bool lo_sujetan =
                fin.codigo == ERROR_ACCESS_DENIED || fin.codigo == ERROR_SHARING_VIOLATION;
            if (!lo_sujetan || i == intentos_por_nombre || esperas_ == max_esperas) {
                return false;  // the name is taken (183, 80), or nothing can be done
            }
            ++esperas_;
            sistema.duerme_ms(espera_ms);
        }
    }

    unsigned esperas_ = 0;
    ruta_fijada directorio_;
    vista_w extension_;
    lista_textos<wchar_t> descartados_;
};

}  // namespace

cadena_w i_directorio_temporal() {
    return i_path_largo(i_directorio_temporal_dado().c_str());
}

cadena_w i_crea_fichero_temporal() {
    const cadena_w directorio = i_directorio_temporal_dado();
    const ruta_fijada fijado(directorio.c_str());
    fichero_nuevo creado = i_insiste_con_prefijo(fijado, prefijo_primero);
    if (creado.nombre.es_nula()) {
        // In service mode too: nothing that needs a temporary file works until somebody mends this.
        const cadena_w aviso =
            i_tres_frases(directorio, creado.codigo,
                          i_mensaje(i_msg_402847_borrar_ficheros_o_modificar_temp, {directorio}));
        lmaviso_aviso_interno_como_error_u(aviso.c_str());
        creado = i_insiste_con_prefijo(fijado, prefijo_segundo);
    }
    if (creado.nombre.es_nula()) {
        error_interno_liberando_mensaje_u(
            i_tres_frases(directorio, creado.codigo, i_mensaje(i_msg_385692_modificar_variable_temp)));
        return cadena_w(vista_w());
    }
    return i_path_largo(creado.nombre.c_str());
}

cadena_w i_crea_fichero_temporal_con_ext(vista_w ext) noexcept {
    if (iguales_sin_caja(ext, extension_del_sistema)) {
        return i_crea_fichero_temporal();
    }
    const cadena_w directorio = i_directorio_temporal_dado();
    return i_path_largo(i_crea_fichero_unico(directorio.c_str(), ext).c_str());
}

cadena_w i_crea_fichero_unico(const wchar_t* directorio, vista_w extension) noexcept {
    return fichero_unico(directorio, extension).crea();
}

}  // namespace interno
