// Keys: creating, listing and deleting them, and the probe of the right to write. See lumoreg.hpp.
#include "companions/arr.hpp"
#include "frame/puente.hpp"
#include "system/lumoreg.hpp"

namespace lumodir {
namespace {

constexpr std::size_t mayor_nombre_de_clave = 255;  // units; the registry's own limit
constexpr std::size_t bytes_por_unidad = 3;         // at most, in any 8-bit code page (UTF-8)
constexpr DWORD sitio_nombre_a_borrar = 100;        // units; a longer name is passed over

constexpr const wchar_t* clave_de_prueba = L"SOFTWARE\\LUMO";

template <class C>
unsigned short i_dame_subclaves(const apertura& como, const C* ruta, arr_cadena<C>* subclaves,
                                lugar donde) noexcept {
    const bool hay_lista = i_comprueba(subclaves != nullptr, "(subclaves) != NULL", donde);
    const clave_abierta<C> clave(como, ruta, KEY_READ, donde);
    censo_de_clave censo;
    if (!hay_lista || !clave.abierta() || !clave.comprueba(registro_de<C>::cuenta(clave.get(), &censo)) ||
        censo.num_subclaves == 0) {
        return FALSO;
    }
    // Room for any name: one that is created meanwhile may be longer than the longest that was counted.
    std::size_t sitio =
        censo.mayor_subclave < mayor_nombre_de_clave ? mayor_nombre_de_clave : censo.mayor_subclave;
    sitio = sitio * (sizeof(C) == 1 ? bytes_por_unidad : 1) + 1;
    vector_interno<C> nombre;
    nombre.reserva_sitio(sitio, donde);
    nombre.data()[0] = C(0);
    for (DWORD indice = 0; indice < censo.num_subclaves; ++indice) {
        auto longitud = static_cast<DWORD>(sitio);
        const LSTATUS error = registro_de<C>::dame_subclave(clave.get(), indice, nombre.data(), &longitud);
        i_comprueba_con(error == ERROR_SUCCESS || error == ERROR_MORE_DATA,
                        "error == ERROR_SUCCESS || error == ERROR_MORE_DATA", a_vista(ruta), donde);
        // Also after a failure: callers count on one element per counted subkey.
        subclaves->anade(cadena<C>(a_vista(static_cast<const C*>(nombre.data())), donde), donde);
    }
    return CIERTO;
}

void i_borra_subclave(HKEY clave, const wchar_t* nombre, lugar donde) noexcept {
    const LSTATUS resultado = sistema_registro.RegDeleteKeyW(clave, nombre);
    i_comprueba_con(resultado == ERROR_SUCCESS, "resultado == ERROR_SUCCESS", a_vista(nombre), donde);
}

// One pass over what is below a key. The index moves on although the subkey just deleted has left the
// enumeration, so every second one of a level stays: programs rely on how much one call deletes.
void i_borra_contenido(unsigned long raiz, const wchar_t* ruta, lugar donde) noexcept {
    const clave_abierta<wchar_t> clave(apertura::en_cualquiera(raiz), ruta, KEY_ALL_ACCESS, donde);
    if (!i_comprueba_con(clave.abierta(), "clave_abierta == CIERTO", a_vista(ruta), donde)) {
        return;
    }
    wchar_t nombre[sitio_nombre_a_borrar];
    for (DWORD indice = 0;; ++indice) {
        DWORD longitud = sitio_nombre_a_borrar;
        const LSTATUS error = registro_de<wchar_t>::dame_subclave(clave.get(), indice, nombre, &longitud);
        if (error == ERROR_MORE_DATA) {
            continue;
        }
        // Whatever else it is, asking for the next one would give it again, for ever.
        if (error != ERROR_SUCCESS) {
            return;
        }
        const cadena_w ruta_subclave = concatena<wchar_t>({a_vista(ruta), L"\\", nombre}, donde);
        i_borra_contenido(raiz, ruta_subclave.c_str(), donde);
        i_borra_subclave(clave.get(), nombre, donde);
    }
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

unsigned short lumoreg_crea_clave_en_vista_u(unsigned long vista, unsigned long raiz, const wchar_t* clave) {
    const lugar donde = lugar::aqui();
    REGSAM acceso = KEY_ALL_ACCESS;
    const bool hay_clave = i_comprueba(clave != nullptr, "(clave) != NULL", donde);
    const bool hay_vista = i_anade_vista(vista, &acceso, donde);
    const HKEY raiz_abierta = i_raiz(raiz, donde);
    if (!hay_clave || !hay_vista || raiz_abierta == nullptr) {
        return FALSO;
    }
    HKEY creada = nullptr;
    wchar_t sin_clase[] = L"";
    if (sistema_registro.RegCreateKeyExW(raiz_abierta, clave, 0, sin_clase, 0, acceso, nullptr, &creada,
                                         nullptr) != ERROR_SUCCESS) {
        return FALSO;
    }
    const LSTATUS error = sistema_registro.RegCloseKey(creada);
    i_comprueba_con(error == ERROR_SUCCESS, "error == ERROR_SUCCESS", a_vista(clave), donde);
    return CIERTO;
}

unsigned short lumoreg_crea_clave_u(unsigned long raiz, const wchar_t* clave) {
    return lumoreg_crea_clave_en_vista_u(LUMOREG_VISTA_PROCESO, raiz, clave);
}

unsigned short lumoreg_dame_subclaves_ex_u(unsigned long vista, unsigned long raiz, const wchar_t* clave,
                                           ArrCADENA_u* subclaves) {
    return i_dame_subclaves(apertura::en_vista(vista, raiz), clave, subclaves, lugar::aqui());
}

unsigned short lumoreg_dame_subclaves_u(unsigned long raiz, const wchar_t* clave, ArrCADENA_u* subclaves) {
    return i_dame_subclaves(apertura::en_cualquiera(raiz), clave, subclaves, lugar::aqui());
}

unsigned short lumoreg_dame_subclaves(unsigned long raiz, const char* clave, ArrCADENA* subclaves) {
    return i_dame_subclaves(apertura::en_cualquiera(raiz), clave, subclaves, lugar::aqui());
}

void lumoreg_borra_clave_u(unsigned long raiz, const wchar_t* clave, const wchar_t* nombre) {
    const lugar donde = lugar::aqui();
    const bool hay_nombre = i_comprueba(nombre != nullptr, "(nombre) != NULL", donde);
    const clave_abierta<wchar_t> padre(apertura::en_cualquiera(raiz), clave, KEY_ALL_ACCESS, donde);
    if (!hay_nombre || !padre.abierta()) {
        return;
    }
    // A root key has no parent and can never go: nothing below it does either.
    if (!i_comprueba(clave[0] != L'\0' || nombre[0] != L'\0',
                     "widestr_longitud(clave) > 0 || widestr_longitud(nombre) > 0", donde)) {
        return;
    }
    const cadena_w ruta = concatena<wchar_t>({clave, L"\\", nombre}, donde);
    i_borra_contenido(raiz, ruta.c_str(), donde);
    i_borra_subclave(padre.get(), nombre, donde);
}

void lumoreg_borra_clave(unsigned long raiz, const char* clave, const char* nombre) {
    puente_sin_resultado<lumoreg_borra_clave_u>(raiz, clave, nombre);
}

unsigned short lumoreg_tiene_permisos_escribir_en_registro(void) {
    constexpr unsigned long raiz = LUMOREG_RAIZ_LOCAL_MACHINE;
    if (lumoreg_existe_clave_u(raiz, clave_de_prueba) != CIERTO &&
        lumoreg_crea_clave_u(raiz, clave_de_prueba) != CIERTO) {
        return FALSO;
    }
    if (lumoreg_establece_cadena_u(raiz, clave_de_prueba, L"Prueba", L"prueba") != CIERTO) {
        return FALSO;
    }
    if (lumoreg_existe_clave_u(raiz, clave_de_prueba) == CIERTO) {
        // Without a name it is the key itself that is cleared and deleted.
        lumoreg_borra_clave_u(raiz, clave_de_prueba, L"");
    }
    return CIERTO;
}
