/**
 * @file sistema.hpp
 * Registry, drives, processes, Wine (lumoreg.h, info.h, discos.h, lumodir_unidades.h, taskproc.h, wine.h).
 * The names are those of the C functions, as told in rutas.hpp.
 */
#ifndef LUMODIR_CPP_SISTEMA_HPP
#define LUMODIR_CPP_SISTEMA_HPP

#include "../discos.h"
#include "../info.h"
#include "../lumodir.h"
#include "../lumoreg.h"
#include "../taskproc.h"
#include "../wine.h"
#include "base.hpp"

#ifdef _MSC_VER
#pragma comment(lib, "advapi32")  // the registry's own functions, for lee_ulong()
#endif

namespace lumodir {
namespace lumoreg {

/** Root key. */
enum class raiz : unsigned long {
    classes_root = LUMOREG_RAIZ_CLASSES_ROOT,
    current_config = LUMOREG_RAIZ_CURRENT_CONFIG,
    current_user = LUMOREG_RAIZ_CURRENT_USER,
    local_machine = LUMOREG_RAIZ_LOCAL_MACHINE,
    users = LUMOREG_RAIZ_USERS
};

/** Registry view. */
enum class vista : unsigned long {
    proceso = LUMOREG_VISTA_PROCESO,
    de_64_bits = LUMOREG_VISTA_64BITS,
    de_32_bits = LUMOREG_VISTA_32BITS
};

namespace detalle {
constexpr unsigned long num(raiz r) noexcept {
    return static_cast<unsigned long>(r);
}
constexpr unsigned long num(vista v) noexcept {
    return static_cast<unsigned long>(v);
}
using lumodir::detalle::si;

inline HKEY abierta(raiz r) noexcept {
    switch (r) {
        case raiz::classes_root:
            return HKEY_CLASSES_ROOT;
        case raiz::current_config:
            return HKEY_CURRENT_CONFIG;
        case raiz::current_user:
            return HKEY_CURRENT_USER;
        case raiz::local_machine:
            return HKEY_LOCAL_MACHINE;
        case raiz::users:
            return HKEY_USERS;
    }
    return nullptr;
}

// When there is no number, the code is that of a failure.
inline std::optional<unsigned long> lee_ulong(vista v, raiz r, const argumento& clave,
                                              const argumento& nombre_valor, DWORD& codigo) {
    if (clave.c_str() == nullptr || nombre_valor.c_str() == nullptr) {
        codigo = ERROR_INVALID_PARAMETER;
        return std::nullopt;
    }
    const REGSAM acceso = KEY_QUERY_VALUE | (v == vista::de_64_bits   ? KEY_WOW64_64KEY
                                             : v == vista::de_32_bits ? KEY_WOW64_32KEY
                                                                      : 0u);
    HKEY abierta_aqui = nullptr;
    codigo = static_cast<DWORD>(::RegOpenKeyExW(abierta(r), clave.c_str(), 0, acceso, &abierta_aqui));
    if (codigo != ERROR_SUCCESS) {
        return std::nullopt;
    }
    DWORD tipo = REG_NONE;
    DWORD numero = 0;
    DWORD bytes = sizeof numero;
    codigo = static_cast<DWORD>(::RegQueryValueExW(abierta_aqui, nombre_valor.c_str(), nullptr, &tipo,
                                                   reinterpret_cast<BYTE*>(&numero), &bytes));
    ::RegCloseKey(abierta_aqui);
    if (codigo == ERROR_SUCCESS && (tipo != REG_DWORD || bytes != sizeof numero)) {
        codigo = ERROR_INVALID_DATATYPE;
    }
    return codigo == ERROR_SUCCESS ? std::optional<unsigned long>(numero) : std::nullopt;
}
}  // namespace detalle

/** Whether a key exists and may be read. */
inline bool existe_clave(raiz r, const argumento& clave) {
    return detalle::si(lumoreg_existe_clave_u(detalle::num(r), clave.c_str()));
}
/** The same in one view. */
inline bool existe_clave_en_vista(vista v, raiz r, const argumento& clave) {
    return detalle::si(lumoreg_existe_clave_en_vista_u(detalle::num(v), detalle::num(r), clave.c_str()));
}
/** Creates a key with its missing parents, or opens it. */
inline bool crea_clave(raiz r, const argumento& clave) {
    return detalle::si(lumoreg_crea_clave_u(detalle::num(r), clave.c_str()));
}
/** The same in one view. */
inline bool crea_clave_en_vista(vista v, raiz r, const argumento& clave) {
    return detalle::si(lumoreg_crea_clave_en_vista_u(detalle::num(v), detalle::num(r), clave.c_str()));
}
/** Deletes a key and what is below it, one pass: every second subkey of a level stays (lumoreg_borra_clave_u()). */
inline void borra_clave(raiz r, const argumento& clave, const argumento& nombre) {
    lumoreg_borra_clave_u(detalle::num(r), clave.c_str(), nombre.c_str());
}
/** Whether the process may write under HKEY_LOCAL_MACHINE. */
inline bool tiene_permisos_escribir_en_registro() {
    return detalle::si(lumoreg_tiene_permisos_escribir_en_registro());
}
/** Deletes a value. */
inline void borra_valor_clave(raiz r, const argumento& clave, const argumento& nombre_valor) {
    lumoreg_borra_valor_clave_u(detalle::num(r), clave.c_str(), nombre_valor.c_str());
}
/** Writes a string value in a key that exists. */
inline bool establece_cadena(raiz r, const argumento& clave, const argumento& nombre_valor,
                             const argumento& dato) {
    return detalle::si(
        lumoreg_establece_cadena_u(detalle::num(r), clave.c_str(), nombre_valor.c_str(), dato.c_str()));
}
/** The same, a string whose environment variables the reader expands. */
inline bool establece_cadena_expand(raiz r, const argumento& clave, const argumento& nombre_valor,
                                    const argumento& dato) {
    return detalle::si(lumoreg_establece_cadena_expand_u(detalle::num(r), clave.c_str(), nombre_valor.c_str(),
                                                         dato.c_str()));
}
/** Writes a string value in one view. */
inline bool establece_cadena_en_vista(vista v, raiz r, const argumento& clave, const argumento& nombre_valor,
                                      const argumento& dato) {
    return detalle::si(lumoreg_establece_cadena_en_vista_u(detalle::num(v), detalle::num(r), clave.c_str(),
                                                           nombre_valor.c_str(), dato.c_str()));
}
/** Writes a 32-bit value. */
inline bool establece_ulong(raiz r, const argumento& clave, const argumento& nombre_valor,
                            unsigned long dato) {
    return detalle::si(lumoreg_establece_ulong_u(detalle::num(r), clave.c_str(), nombre_valor.c_str(), dato));
}
/** Reads a value as a string. */
inline std::optional<cadena> lee_cadena(raiz r, const argumento& clave, const argumento& nombre_valor) {
    cadena contenido;
    if (!detalle::si(lumoreg_lee_cadena_u(detalle::num(r), clave.c_str(), nombre_valor.c_str(),
                                          contenido.direccion()))) {
        return std::nullopt;
    }
    return contenido;
}
/** The same in one view. */
inline std::optional<cadena> lee_cadena_ex(vista v, raiz r, const argumento& clave,
                                           const argumento& nombre_valor) {
    cadena contenido;
    if (!detalle::si(lumoreg_lee_cadena_ex_u(detalle::num(v), detalle::num(r), clave.c_str(),
                                             nombre_valor.c_str(), contenido.direccion()))) {
        return std::nullopt;
    }
    return contenido;
}
/** Reads a 32-bit value in one view; nothing when there is none, or one of another type. */
inline std::optional<unsigned long> lee_ulong_ex(vista v, raiz r, const argumento& clave,
                                                 const argumento& nombre_valor) {
    DWORD codigo = ERROR_SUCCESS;
    return detalle::lee_ulong(v, r, clave, nombre_valor, codigo);
}
/**
 * Reads a 32-bit value, what establece_ulong() wrote. The C functions have no such reader: lee_cadena() would take
 * its four bytes for text. The views are tried in the order of lee_cadena(); nothing when there is no such value,
 * or one of another type.
 */
inline std::optional<unsigned long> lee_ulong(raiz r, const argumento& clave, const argumento& nombre_valor) {
    for (const vista v : {vista::proceso, vista::de_64_bits, vista::de_32_bits}) {
        DWORD codigo = ERROR_SUCCESS;
        const std::optional<unsigned long> numero = detalle::lee_ulong(v, r, clave, nombre_valor, codigo);
        if (numero || codigo != ERROR_FILE_NOT_FOUND) {
            return numero;
        }
    }
    return std::nullopt;
}
/** The names of the subkeys; empty when the key does not open. */
inline lista dame_subclaves(raiz r, const argumento& clave) {
    lista subclaves(arr_CreaCADENA_u(0));
    lumoreg_dame_subclaves_u(detalle::num(r), clave.c_str(), subclaves.get());
    return subclaves;
}
/** The same in one view. */
inline lista dame_subclaves_ex(vista v, raiz r, const argumento& clave) {
    lista subclaves(arr_CreaCADENA_u(0));
    lumoreg_dame_subclaves_ex_u(detalle::num(v), detalle::num(r), clave.c_str(), subclaves.get());
    return subclaves;
}

/** A string value: one text, or the pieces of a multi-string. */
struct valor {
    std::wstring nombre;
    std::vector<std::wstring> textos;
};

/** The string values of a key. */
inline std::optional<std::vector<valor>> lee_valores_cadena_clave_ex(vista v, raiz r, const argumento& clave);

}  // namespace lumoreg

namespace detalle {
template <>
struct destruccion<Taskproc> {
    static void libera(Taskproc** registro) noexcept { taskproc_destruye(registro); }
};
template <>
struct destruccion<UnidadSistema> {
    static void libera(UnidadSistema** registro) noexcept {
        lumodir_destruyeEstructuraUnidadSistema(registro);
    }
};
template <>
struct destruccion<InfoTabla> {
    static void libera(InfoTabla* tabla) noexcept { info_LiberaTabla(tabla); }
};
}  // namespace detalle

inline std::optional<std::vector<lumoreg::valor>> lumoreg::lee_valores_cadena_clave_ex(
    vista v, raiz r, const argumento& clave) {
    lista nombres;
    registros<ArrCADENA_u> datos;
    if (!lumodir::detalle::si(lumoreg_lee_valores_cadena_clave_ex_u(
            detalle::num(v), detalle::num(r), clave.c_str(), nombres.direccion(), datos.direccion()))) {
        return std::nullopt;
    }
    std::vector<valor> valores;
    valores.reserve(nombres.size());
    for (std::size_t i = 0; i < nombres.size(); ++i) {
        valor uno{std::wstring(nombres[i]), {}};
        for (unsigned long j = 0; j < arr_NumElemsCADENA_u(&datos[i]); ++j) {
            uno.textos.emplace_back(arr_GetCADENA_u(&datos[i], j));
        }
        valores.push_back(std::move(uno));
    }
    return valores;
}

/* ---- Drives ---- */

namespace info {

/** The drive table of the machine, owned. */
class tabla {
public:
    using value_type = InfoDisco;
    using const_iterator = detalle::iterador<tabla>;

    /** With the drives that are present now. */
    tabla() { info_GetDriveInfoSystem(tabla_.direccion()); }

    std::size_t size() const noexcept { return tabla_.get().numDiscos; }
    bool empty() const noexcept { return size() == 0; }
    /** An entry that there is: `i` below size(). */
    const InfoDisco& operator[](std::size_t i) const noexcept { return tabla_.get().discos[i]; }
    const_iterator begin() const noexcept { return {this, 0}; }
    const_iterator end() const noexcept { return {this, size()}; }
    /** The entry of a drive, 0 = A to 25 = Z; nullptr when it is not in the table. */
    const InfoDisco* BuscaDiscoId(unsigned short disco) const {
        const unsigned short i = info_BuscaDiscoId(&tabla_.get(), disco);
        return i == INFO_DISCO_AUSENTE ? nullptr : tabla_.get().discos + i;
    }

private:
    detalle::dueno<InfoTabla> tabla_;
};

/** The letter of an entry and a colon. */
inline cadena_a GetTxtDrive(const InfoDisco& disco) {
    return cadena_a(info_GetTxtDrive(&disco));
}
/** The current directory of a drive, 0 = current drive, 1 = A; nothing when it has none. */
inline std::optional<cadena> GetActualDirectorio_compatible_chdir(int unidad) {
    wchar_t* directorio = info_GetActualDirectorio_compatible_chdir(unidad, nullptr, 0);
    return directorio == nullptr ? std::nullopt : std::optional<cadena>(cadena(directorio));
}

}  // namespace info

namespace discos {

/** Whether a drive, by its letter, is local. */
inline bool es_unidad_local(wchar_t unidad) {
    return detalle::si(discos_es_unidad_local(unidad));
}
/** Whether a drive, by its letter, is a substitution of a directory. */
inline bool es_unidad_subst(wchar_t unidad) {
    return detalle::si(discos_es_unidad_subst(unidad));
}
/** The volume name of a drive, 0 = A to 25 = Z. */
inline cadena nombre_volumen(unsigned short disco) {
    return cadena(discos_nombre_volumen(disco));
}

}  // namespace discos

using unidades = registros<UnidadSistema>; /**< drives with their labels for display */

/** The drives of the system. */
inline unidades UnidadesDelSistema() {
    return unidades(lumodir_UnidadesDelSistema());
}
/** The same with the volume names. */
inline unidades UnidadesDelSistemaConNombre() {
    return unidades(lumodir_UnidadesDelSistemaConNombre());
}
/** The label of a drive. */
inline cadena nombreCompleto_UnidadSistema(const UnidadSistema& unidad) {
    return cadena(lumodir_nombreCompleto_UnidadSistema_UNICODE(&unidad));
}
/** The type of a drive, INFO_TIPO_... */
inline unsigned long tipoDrive_UnidadSistema(const UnidadSistema& unidad) {
    return lumodir_tipoDrive_UnidadSistema(&unidad);
}

/* ---- Processes ---- */

namespace taskproc {

using procesos = registros<Taskproc>; /**< modules that matched: name, process, path */

/** Every loaded module of a name, letter case included. */
inline procesos busca_proceso_abierto(const argumento& modulo) {
    procesos encontrados;
    taskproc_busca_proceso_abierto(modulo.c_str(), encontrados.direccion());
    return encontrados;
}
/** Whether there is one; the search stops at the first. */
inline bool hay_proceso_abierto(const argumento& modulo) {
    return detalle::si(taskproc_busca_proceso_abierto(modulo.c_str(), nullptr));
}
/** Terminates the process of a record; whether that was attempted. */
inline bool mata_proceso(const Taskproc& proceso) {
    return detalle::si(taskproc_mata_proceso(&proceso));
}
/** Terminates every process that has loaded a module of a name; whether there was one. */
inline bool mata_procesos_nombre_dado(const argumento& modulo) {
    return detalle::si(taskproc_mata_procesos_nombre_dado(modulo.c_str()));
}
/** The full path of the module of a record; valid as long as the record. */
inline std::wstring_view ruta_proceso(const Taskproc& proceso) {
    return detalle::vista(taskproc_ruta_proceso(&proceso));
}

}  // namespace taskproc

namespace wine {

/** Whether the process runs under Wine. */
inline bool estamos_en_wine() {
    return detalle::si(wine_estamos_en_wine());
}

}  // namespace wine
}  // namespace lumodir

#endif
