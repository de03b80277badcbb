// The exports of lumoreg.h. Each opens the key even where another argument is missing: what is wrong with it is reported
// all the same.
#include "lumoreg.h"

#include "abi/exportacion.hpp"
#include "frame/puente.hpp"
#include "system/lumoreg_claves.hpp"
#include "system/lumoreg_valores.hpp"

using namespace interno;

namespace {

unsigned short i_crea_clave_en(unsigned long vista, unsigned long raiz, const wchar_t* clave) noexcept {
    const bool hay_clave = i_comprueba(clave != nullptr, "(clave) != NULL");
    const std::optional<REGSAM> bandera = i_bandera_de_claves(vista);
    const HKEY raiz_abierta = i_raiz(raiz);
    return logico(hay_clave && bandera && raiz_abierta != nullptr &&
                  i_crea_clave(raiz_abierta, clave, KEY_ALL_ACCESS | *bandera));
}

unsigned short i_escribe_en(const apertura& como, const wchar_t* clave, const wchar_t* nombre_valor,
                            DWORD tipo, const void* dato, std::size_t bytes) noexcept {
    const bool hay_nombre = i_comprueba(nombre_valor != nullptr, "(nombre_valor) != NULL");
    const bool hay_dato = i_comprueba(dato != nullptr, "(dato) != NULL");
    const clave_abierta<wchar_t> abierta(como, clave, KEY_ALL_ACCESS);
    return logico(hay_nombre && hay_dato && abierta.abierta() &&
                  i_escribe(abierta, nombre_valor, tipo, dato, bytes));
}

unsigned short i_establece_cadena(const apertura& como, const wchar_t* clave, const wchar_t* nombre_valor,
                                  DWORD tipo, const wchar_t* dato) noexcept {
    return i_escribe_en(como, clave, nombre_valor, tipo, dato, (a_vista(dato).size() + 1) * sizeof(wchar_t));
}

template <class C>
unsigned short i_lee_cadena_en(const apertura& como, const C* clave, const C* nombre_valor,
                               C** contenido) noexcept {
    const bool hay_contenido = i_comprueba(contenido != nullptr, "(contenido) != NULL");
    const bool hay_nombre = i_comprueba(nombre_valor != nullptr, "(nombre_valor) != NULL");
    const clave_abierta<C> abierta(como, clave, KEY_QUERY_VALUE);
    if (!hay_contenido || !hay_nombre || !abierta.abierta()) {
        return FALSO;
    }
    cadena<C> leida = i_lee_cadena(abierta, nombre_valor);
    if (leida.es_nula()) {
        return FALSO;
    }
    *contenido = leida.suelta();
    return CIERTO;
}

template <class C>
unsigned short i_dame_subclaves_en(const apertura& como, const C* clave, arr_cadena<C>* subclaves) noexcept {
    const bool hay_lista = i_comprueba(subclaves != nullptr, "(subclaves) != NULL");
    const clave_abierta<C> abierta(como, clave, KEY_READ);
    return logico(hay_lista && abierta.abierta() && i_dame_subclaves(abierta, *subclaves));
}

valores_de_clave i_lista_valores_en(const apertura& como, const wchar_t* clave, bool hay_listas) noexcept {
    const clave_abierta<wchar_t> abierta(como, clave, KEY_QUERY_VALUE);
    return hay_listas && abierta.abierta() ? i_lista_valores(abierta) : valores_de_clave();
}

}  // namespace

// ---- Keys

unsigned short lumoreg_existe_clave_u(unsigned long raiz, const wchar_t* clave) {
    return logico(i_existe_clave(apertura::en_cualquiera(raiz), clave));
}
unsigned short lumoreg_existe_clave(unsigned long raiz, const char* clave) {
    return puente<lumoreg_existe_clave_u>(raiz, clave);
}

unsigned short lumoreg_existe_clave_en_vista_u(unsigned long vista, unsigned long raiz,
                                               const wchar_t* clave) {
    return logico(i_existe_clave(apertura::en_vista(vista, raiz), clave));
}

unsigned short lumoreg_crea_clave_u(unsigned long raiz, const wchar_t* clave) {
    return i_crea_clave_en(LUMOREG_VISTA_PROCESO, raiz, clave);
}

unsigned short lumoreg_crea_clave_en_vista_u(unsigned long vista, unsigned long raiz, const wchar_t* clave) {
    return i_crea_clave_en(vista, raiz, clave);
}

void lumoreg_borra_clave_u(unsigned long raiz, const wchar_t* clave, const wchar_t* nombre) {
    const bool hay_nombre = i_comprueba(nombre != nullptr, "(nombre) != NULL");
    // Without a name the parent is the key to delete: if that is a link, then the link.
    const bool el_propio = hay_nombre && nombre[0] == L'\0';
    const clave_abierta<wchar_t> padre(apertura::para_borrar(raiz, el_propio), clave, KEY_ALL_ACCESS);
    if (hay_nombre && padre.abierta()) {
        i_borra_clave(padre, a_vista(nombre));
    }
}
void lumoreg_borra_clave(unsigned long raiz, const char* clave, const char* nombre) {
    puente<lumoreg_borra_clave_u>(raiz, clave, nombre);
}

unsigned short lumoreg_tiene_permisos_escribir_en_registro(void) {
    return logico(i_se_puede_escribir());
}

// ---- Writing values

void lumoreg_borra_valor_clave_u(unsigned long raiz, const wchar_t* clave, const wchar_t* nombre_valor) {
    const bool hay_nombre = i_comprueba(nombre_valor != nullptr, "(nombre_valor) != NULL");
    const clave_abierta<wchar_t> abierta(apertura::en_cualquiera(raiz), clave, KEY_ALL_ACCESS);
    if (hay_nombre && abierta.abierta()) {
        i_borra_valor(abierta, nombre_valor);
    }
}

unsigned short lumoreg_establece_cadena_u(unsigned long raiz, const wchar_t* clave,
                                          const wchar_t* nombre_valor, const wchar_t* dato) {
    return i_establece_cadena(apertura::en_cualquiera(raiz), clave, nombre_valor, REG_SZ, dato);
}

unsigned short lumoreg_establece_cadena_expand_u(unsigned long raiz, const wchar_t* clave,
                                                 const wchar_t* nombre_valor, const wchar_t* dato) {
    return i_establece_cadena(apertura::en_cualquiera(raiz), clave, nombre_valor, REG_EXPAND_SZ, dato);
}

unsigned short lumoreg_establece_cadena_en_vista_u(unsigned long vista, unsigned long raiz,
                                                   const wchar_t* clave, const wchar_t* nombre_valor,
                                                   const wchar_t* dato) {
    return i_establece_cadena(apertura::en_vista(vista, raiz), clave, nombre_valor, REG_SZ, dato);
}

unsigned short lumoreg_establece_ulong_u(unsigned long raiz, const wchar_t* clave,
                                         const wchar_t* nombre_valor, unsigned long dato) {
    const DWORD valor = dato;
    return i_escribe_en(apertura::en_cualquiera(raiz), clave, nombre_valor, REG_DWORD, &valor, sizeof valor);
}
unsigned short lumoreg_establece_ulong(unsigned long raiz, const char* clave, const char* nombre_valor,
                                       unsigned long dato) {
    return puente<lumoreg_establece_ulong_u>(raiz, clave, nombre_valor, dato);
}

// ---- Reading

unsigned short lumoreg_lee_cadena_u(unsigned long raiz, const wchar_t* clave, const wchar_t* nombre_valor,
                                    wchar_t** contenido) {
    return i_lee_cadena_en(apertura::en_cualquiera(raiz), clave, nombre_valor, contenido);
}
unsigned short lumoreg_lee_cadena(unsigned long raiz, const char* clave, const char* nombre_valor,
                                  char** contenido) {
    return i_lee_cadena_en(apertura::en_cualquiera(raiz), clave, nombre_valor, contenido);
}

unsigned short lumoreg_lee_cadena_ex_u(unsigned long vista, unsigned long raiz, const wchar_t* clave,
                                       const wchar_t* nombre_valor, wchar_t** contenido) {
    return i_lee_cadena_en(apertura::en_vista(vista, raiz), clave, nombre_valor, contenido);
}

unsigned short lumoreg_dame_subclaves_u(unsigned long raiz, const wchar_t* clave, ArrCADENA_u* subclaves) {
    return i_dame_subclaves_en(apertura::en_cualquiera(raiz), clave, subclaves);
}
unsigned short lumoreg_dame_subclaves(unsigned long raiz, const char* clave, ArrCADENA* subclaves) {
    return i_dame_subclaves_en(apertura::en_cualquiera(raiz), clave, subclaves);
}

unsigned short lumoreg_dame_subclaves_ex_u(unsigned long vista, unsigned long raiz, const wchar_t* clave,
                                           ArrCADENA_u* subclaves) {
    return i_dame_subclaves_en(apertura::en_vista(vista, raiz), clave, subclaves);
}

unsigned short lumoreg_lee_valores_cadena_clave_ex_u(unsigned long vista, unsigned long raiz,
                                                     const wchar_t* clave, ArrCADENA_u** valores,
                                                     ArrPunteroConTipo** datos_valores) {
    const bool hay_valores = i_comprueba(valores != nullptr, "(valores) != NULL");
    const bool hay_datos = i_comprueba(datos_valores != nullptr, "(datos_valores) != NULL");
    valores_de_clave leidos =
        i_lista_valores_en(apertura::en_vista(vista, raiz), clave, hay_valores && hay_datos);
    const unsigned short hechos = logico(leidos.nombres != nullptr);
    if (hay_valores) {
        *valores = leidos.nombres.suelta();
    }
    if (hay_datos) {
        *datos_valores = leidos.datos.suelta();
    }
    return hechos;
}
