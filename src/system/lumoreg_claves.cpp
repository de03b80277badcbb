// See lumoreg_claves.hpp.
#include "system/lumoreg_claves.hpp"

#include <algorithm>

#include "system/lumoreg_valores.hpp"
#include "system/multicadena.hpp"

namespace interno {
namespace {

constexpr std::size_t mayor_nombre_de_clave = 255;  // units; the registry's own limit
constexpr std::size_t mayor_caracter_bytes = 3;     // at most, in any 8-bit code page (UTF-8)
constexpr DWORD sitio_nombre_a_borrar = 100;        // units; a longer name is passed over

constexpr const wchar_t* clave_de_prueba = L"SOFTWARE\\LUMO";

// One deletion: the named key and one pass over what is below it. The index of a level moves on although the subkey
// just deleted has left the enumeration, so every second one of a level stays: programs rely on how much one call
// deletes.
class borrado_de_clave {
public:
    // The path of the parent goes before that of the key in reports. `bandera` is that of the one view.
    borrado_de_clave(vista_w padre, REGSAM bandera) noexcept : bandera_(bandera) {
        ruta_.anade_varios(padre.data(), padre.size());
    }
    borrado_de_clave(const borrado_de_clave&) = delete;
    borrado_de_clave& operator=(const borrado_de_clave&) = delete;

    // Without a name it is the parent itself; that one is not closed here.
    void borra(HKEY padre, vista_w nombre) noexcept {
        const std::size_t donde_empieza = i_anade_nombre(nombre);
        if (nombre.empty()) {
            niveles_.anade({padre, 0, donde_empieza, false});
        } else {
            i_entra(padre, donde_empieza);
        }
        while (!niveles_.empty()) {
            i_siguiente();
        }
    }

private:
    struct nivel {
        HKEY clave;
        DWORD indice;        // of the next subkey
        std::size_t nombre;  // where that of this key begins in the path
        bool propia;
    };

    // Answers where the name begins. A key below a root has no separator before it.
    std::size_t i_anade_nombre(vista_w nombre) noexcept {
        if (!ruta_.empty()) {
            ruta_.anade(L'\\');
        }
        const std::size_t donde_empieza = ruta_.size();
        ruta_.anade_varios(nombre.data(), nombre.size());
        return donde_empieza;
    }
    vista_w i_ruta() const noexcept { return vista_w(ruta_.data(), ruta_.size()); }
    vista_w i_nombre(std::size_t donde_empieza) const noexcept { return i_ruta().substr(donde_empieza); }
    // Gives the path the length of its parent's again.
    void i_quita_nombre(std::size_t donde_empieza) noexcept {
        ruta_.acorta(donde_empieza == 0 ? 0 : donde_empieza - 1);
    }

    // The key that bears the last name of the path, itself even if it is a link; NULL when it does not open.
    HKEY i_abre(HKEY padre, std::size_t donde_empieza, REGSAM acceso) noexcept {
        HKEY clave = nullptr;
        ruta_.anade(L'\0');
        const LSTATUS error = sistema.RegOpenKeyExW(padre, ruta_.data() + donde_empieza, REG_OPTION_OPEN_LINK,
                                                    acceso | bandera_, &clave);
        ruta_.quita_ultimo();
        return error == ERROR_SUCCESS ? clave : nullptr;
    }
    void i_entra(HKEY padre, std::size_t donde_empieza) noexcept {
        const HKEY clave = i_abre(padre, donde_empieza, KEY_ALL_ACCESS);
        if (i_comprueba_con(clave != nullptr, "clave_abierta == CIERTO", i_ruta())) {
            niveles_.anade({clave, 0, donde_empieza, true});
            return;
        }
        // What may not be read may still be deleted where it is empty.
        i_borra_abierta({i_abre(padre, donde_empieza, DELETE), 0, donde_empieza, true});
    }
    // Deletes and closes the key that the path names; one that did not open counts as a failure.
    void i_borra_abierta(const nivel& n) noexcept {
        const bool borrada = n.clave != nullptr && sistema.NtDeleteKey(n.clave) == 0;
        i_comprueba_con(borrada, "resultado == ERROR_SUCCESS", i_nombre(n.nombre));
        if (n.clave != nullptr && n.propia) {
            const LSTATUS error = sistema.RegCloseKey(n.clave);
            i_comprueba_con(error == ERROR_SUCCESS, "error == ERROR_SUCCESS", i_ruta());
        }
        i_quita_nombre(n.nombre);
    }
    // One step: into the next subkey of the deepest level or, where there is none, that level's end.
    void i_siguiente() noexcept {
        wchar_t nombre[sitio_nombre_a_borrar];
        DWORD longitud = sitio_nombre_a_borrar;
        const HKEY clave = niveles_.back().clave;
        const LSTATUS error = sistema.RegEnumKeyExW(clave, niveles_.back().indice++, nombre, &longitud,
                                                    nullptr, nullptr, nullptr, nullptr);
        if (error == ERROR_MORE_DATA) {
            return;
        }
        // Whatever else it is, asking for the next one would give it again, for ever.
        if (error != ERROR_SUCCESS) {
            const nivel acabado = niveles_.back();
            niveles_.quita_ultimo();
            i_borra_abierta(acabado);
            return;
        }
        const vista_w entero(nombre, std::min(longitud, sitio_nombre_a_borrar - 1));
        const std::size_t donde_empieza = i_anade_nombre(i_hasta_terminador(entero));
        if (i_hasta_terminador(entero).empty() || i_hasta_terminador(entero).size() != entero.size()) {
            // To the calls by name this is another key, or the level itself once more.
            i_comprueba_con(false, "clave_abierta == CIERTO", i_ruta());
            i_borra_abierta({nullptr, 0, donde_empieza, false});
            return;
        }
        i_entra(clave, donde_empieza);
    }

    REGSAM bandera_;
    vector_interno<wchar_t> ruta_;
    vector_interno<nivel> niveles_;
};

constexpr bool i_sin_nombre(vista_w ruta) noexcept {
    return ruta.find_first_not_of(L'\\') == vista_w::npos;
}

}  // namespace

template <class C>
bool i_dame_subclaves(const clave_abierta<C>& clave, arr_cadena<C>& subclaves) noexcept {
    const std::optional<censo_de_clave> censo = clave.cuenta();
    if (!censo || censo->num_subclaves == 0) {
        return false;
    }
    // Room for any name: one that is created meanwhile may be longer than the longest that was counted.
    const std::size_t unidades = std::max<std::size_t>(mayor_nombre_de_clave, censo->mayor_subclave);
    const std::size_t sitio = unidades * (es_ancho<C> ? 1 : mayor_caracter_bytes) + 1;
    vector_interno<C> nombre;
    nombre.reserva_sitio(sitio);
    nombre.data()[0] = C(0);
    for (DWORD indice = 0; indice < censo->num_subclaves; ++indice) {
        auto longitud = static_cast<DWORD>(sitio);
        const LSTATUS error = clave.dame_subclave(indice, nombre.data(), longitud);
        i_comprueba_con(error == ERROR_SUCCESS || error == ERROR_MORE_DATA,
                        "error == ERROR_SUCCESS || error == ERROR_MORE_DATA", clave.ruta());
        // Also after a failure: callers count on one element per counted subkey.
        subclaves.anade(cadena<C>(a_vista(static_cast<const C*>(nombre.data()))));
    }
    return true;
}

template bool i_dame_subclaves<char>(const clave_abierta<char>&, ArrCADENA&) noexcept;
template bool i_dame_subclaves<wchar_t>(const clave_abierta<wchar_t>&, ArrCADENA_u&) noexcept;

bool i_crea_clave(HKEY raiz, const wchar_t* clave, REGSAM acceso) noexcept {
    HKEY creada = nullptr;
    wchar_t sin_clase[] = L"";
    if (sistema.RegCreateKeyExW(raiz, clave, 0, sin_clase, 0, acceso, nullptr, &creada, nullptr) !=
        ERROR_SUCCESS) {
        return false;
    }
    const LSTATUS error = sistema.RegCloseKey(creada);
    i_comprueba_con(error == ERROR_SUCCESS, "error == ERROR_SUCCESS", a_vista(clave));
    return true;
}

void i_borra_clave(const clave_abierta<wchar_t>& padre, vista_w nombre) noexcept {
    // A root key has no parent and can never go: nothing below it does either.
    if (i_comprueba(!i_sin_nombre(padre.ruta()) || !i_sin_nombre(nombre),
                    "widestr_longitud(clave) > 0 || widestr_longitud(nombre) > 0")) {
        borrado_de_clave(padre.ruta(), padre.bandera()).borra(padre.get(), nombre);
    }
}

bool i_se_puede_escribir() noexcept {
    constexpr apertura la_maquina = apertura::en_cualquiera(LUMOREG_RAIZ_LOCAL_MACHINE);
    if (!i_existe_clave(la_maquina, clave_de_prueba) &&
        !i_crea_clave(i_raiz(la_maquina.raiz), clave_de_prueba, KEY_ALL_ACCESS)) {
        return false;
    }
    {
        const clave_abierta<wchar_t> clave(la_maquina, clave_de_prueba, KEY_ALL_ACCESS);
        if (!clave.abierta() || !i_escribe_cadena(clave, L"Prueba", REG_SZ, L"prueba")) {
            return false;
        }
    }
    if (i_existe_clave(la_maquina, clave_de_prueba)) {
        // Without a name it is the key itself that is cleared and deleted.
        const clave_abierta<wchar_t> clave(apertura::para_borrar(la_maquina.raiz, true), clave_de_prueba,
                                           KEY_ALL_ACCESS);
        if (clave.abierta()) {
            i_borra_clave(clave, {});
        }
    }
    return true;
}

}  // namespace interno
