// Values: writing, reading, listing and deleting them. See lumoreg.hpp.
#include "companions/arr.hpp"
#include "frame/puente.hpp"
#include "system/lumoreg.hpp"
#include "system/multicadena.hpp"

namespace lumodir {
namespace {

// Room for the bytes of one value; short ones need no block.
template <class C>
class bufer_de_valor {
public:
    explicit bufer_de_valor(std::size_t bytes) { prepara(bytes); }
    bufer_de_valor(const bufer_de_valor&) = delete;
    bufer_de_valor& operator=(const bufer_de_valor&) = delete;

    void prepara(std::size_t bytes) {
        unidades_ = (bytes + sizeof(C) - 1) / sizeof(C);
        if (unidades_ > sitio_corto) {
            largo_.reserva_sitio(unidades_);
            datos_ = largo_.data();
        }
    }
    C* datos() noexcept { return datos_; }
    DWORD bytes() const noexcept { return static_cast<DWORD>(unidades_ * sizeof(C)); }
    // The first `bytes` of it as text. The half of a unit that an odd count leaves becomes a whole one.
    vista<C> texto(std::size_t bytes) noexcept {
        const std::size_t enteras = bytes / sizeof(C);
        if (bytes % sizeof(C) != 0) {
            datos_[enteras] = static_cast<C>(datos_[enteras] & 0xFF);
        }
        return vista<C>(datos_, enteras + bytes % sizeof(C));
    }

private:
    static constexpr std::size_t sitio_corto = 512;  // units: a path and some more
    C corto_[sitio_corto];
    vector_interno<C> largo_;
    C* datos_ = corto_;
    std::size_t unidades_ = 0;
};

unsigned short i_escribe(const apertura& como, const wchar_t* ruta, const wchar_t* nombre_valor, DWORD tipo,
                         const void* dato, std::size_t bytes) noexcept {
    const bool hay_nombre = i_comprueba(nombre_valor != nullptr, "(nombre_valor) != NULL");
    const bool hay_dato = i_comprueba(dato != nullptr, "(dato) != NULL");
    const clave_abierta<wchar_t> clave(como, ruta, KEY_ALL_ACCESS);
    if (!hay_nombre || !hay_dato || !clave.abierta()) {
        return FALSO;
    }
    return sistema.RegSetValueExW(clave.get(), nombre_valor, 0, tipo, static_cast<const BYTE*>(dato),
                                  static_cast<DWORD>(bytes)) == ERROR_SUCCESS
               ? CIERTO
               : FALSO;
}

unsigned short i_escribe_cadena(const apertura& como, const wchar_t* ruta, const wchar_t* nombre_valor,
                                DWORD tipo, const wchar_t* dato) noexcept {
    const std::size_t bytes = (a_vista(dato).size() + 1) * sizeof(wchar_t);
    return i_escribe(como, ruta, nombre_valor, tipo, dato, bytes);
}

template <class C>
unsigned short i_lee_cadena(const apertura& como, const C* ruta, const C* nombre_valor,
                            C** contenido) noexcept {
    const bool hay_contenido = i_comprueba(contenido != nullptr, "(contenido) != NULL");
    const bool hay_nombre = i_comprueba(nombre_valor != nullptr, "(nombre_valor) != NULL");
    const clave_abierta<C> clave(como, ruta, KEY_QUERY_VALUE);
    censo_de_clave censo;
    if (!hay_contenido || !hay_nombre || !clave.abierta() ||
        !clave.comprueba(registro_de<C>::cuenta(clave.get(), &censo)) || censo.num_valores == 0) {
        return FALSO;
    }
    bufer_de_valor<C> bufer(censo.mayor_dato_bytes);
    DWORD bytes = bufer.bytes();
    LSTATUS error = registro_de<C>::lee_valor(clave.get(), nombre_valor, bufer.datos(), &bytes);
    // Written anew meanwhile, or 8-bit text that needs more bytes than the UTF-16 that was counted.
    while (error == ERROR_MORE_DATA && bytes > bufer.bytes()) {
        bufer.prepara(bytes);
        bytes = bufer.bytes();
        error = registro_de<C>::lee_valor(clave.get(), nombre_valor, bufer.datos(), &bytes);
    }
    if (error != ERROR_SUCCESS) {
        return FALSO;
    }
    *contenido = cadena<C>(i_hasta_terminador(bufer.texto(bytes))).suelta();
    return CIERTO;
}

objeto<ArrCADENA_u> i_textos_del_valor(DWORD tipo, vista_w datos) noexcept {
    objeto<ArrCADENA_u> textos = objeto<ArrCADENA_u>::crea();
    if (tipo == REG_SZ) {
        textos->anade(cadena_w(i_hasta_terminador(datos)));
    } else {
        i_para_cada_trozo(datos, [&](vista_w trozo) { textos->anade(cadena_w(trozo)); });
    }
    return textos;
}

void i_lista_valores(const clave_abierta<wchar_t>& clave, vista_w ruta, ArrCADENA_u* valores,
                     ArrPunteroConTipo* datos_valores) noexcept {
    censo_de_clave censo;
    clave.comprueba(registro_de<wchar_t>::cuenta(clave.get(), &censo));
    const std::size_t sitio_nombre = censo.mayor_nombre_valor + 1;
    bufer_de_valor<wchar_t> nombre(sitio_nombre * sizeof(wchar_t));
    bufer_de_valor<wchar_t> datos(censo.mayor_dato_bytes);
    for (DWORD indice = 0; indice < censo.num_valores; ++indice) {
        auto longitud = static_cast<DWORD>(sitio_nombre);
        DWORD bytes = datos.bytes();
        DWORD tipo = REG_NONE;
        const LSTATUS status = sistema.RegEnumValueW(clave.get(), indice, nombre.datos(), &longitud, nullptr,
                                                     &tipo, reinterpret_cast<BYTE*>(datos.datos()), &bytes);
        if (i_comprueba_con(status == 0, "status == 0", ruta) && (tipo == REG_SZ || tipo == REG_MULTI_SZ)) {
            valores->anade(cadena_w(vista_w(nombre.datos(), longitud)));
            datos_valores->punteros.anade(i_textos_del_valor(tipo, datos.texto(bytes)).suelta());
        }
    }
}

}  // namespace
}  // namespace lumodir

using namespace lumodir;

unsigned short lumoreg_establece_cadena_u(unsigned long raiz, const wchar_t* clave,
                                          const wchar_t* nombre_valor, const wchar_t* dato) {
    return i_escribe_cadena(apertura::en_cualquiera(raiz), clave, nombre_valor, REG_SZ, dato);
}

unsigned short lumoreg_establece_cadena_expand_u(unsigned long raiz, const wchar_t* clave,
                                                 const wchar_t* nombre_valor, const wchar_t* dato) {
    return i_escribe_cadena(apertura::en_cualquiera(raiz), clave, nombre_valor, REG_EXPAND_SZ, dato);
}

unsigned short lumoreg_establece_cadena_en_vista_u(unsigned long vista, unsigned long raiz,
                                                   const wchar_t* clave, const wchar_t* nombre_valor,
                                                   const wchar_t* dato) {
    return i_escribe_cadena(apertura::en_vista(vista, raiz), clave, nombre_valor, REG_SZ, dato);
}

unsigned short lumoreg_establece_ulong_u(unsigned long raiz, const wchar_t* clave,
                                         const wchar_t* nombre_valor, unsigned long dato) {
    const DWORD valor = dato;
    return i_escribe(apertura::en_cualquiera(raiz), clave, nombre_valor, REG_DWORD, &valor, sizeof valor);
}

unsigned short lumoreg_establece_ulong(unsigned long raiz, const char* clave, const char* nombre_valor,
                                       unsigned long dato) {
    return puente<lumoreg_establece_ulong_u>(raiz, clave, nombre_valor, dato);
}

void lumoreg_borra_valor_clave_u(unsigned long raiz, const wchar_t* clave, const wchar_t* nombre_valor) {
    const bool hay_nombre = i_comprueba(nombre_valor != nullptr, "(nombre_valor) != NULL");
    const clave_abierta<wchar_t> abierta(apertura::en_cualquiera(raiz), clave, KEY_ALL_ACCESS);
    if (hay_nombre && abierta.abierta()) {
        abierta.comprueba(sistema.RegDeleteValueW(abierta.get(), nombre_valor));
    }
}

unsigned short lumoreg_lee_cadena_u(unsigned long raiz, const wchar_t* clave, const wchar_t* nombre_valor,
                                    wchar_t** contenido) {
    return i_lee_cadena(apertura::en_cualquiera(raiz), clave, nombre_valor, contenido);
}

unsigned short lumoreg_lee_cadena(unsigned long raiz, const char* clave, const char* nombre_valor,
                                  char** contenido) {
    return i_lee_cadena(apertura::en_cualquiera(raiz), clave, nombre_valor, contenido);
}

unsigned short lumoreg_lee_cadena_ex_u(unsigned long vista, unsigned long raiz, const wchar_t* clave,
                                       const wchar_t* nombre_valor, wchar_t** contenido) {
    return i_lee_cadena(apertura::en_vista(vista, raiz), clave, nombre_valor, contenido);
}

unsigned short lumoreg_lee_valores_cadena_clave_ex_u(unsigned long vista, unsigned long raiz,
                                                     const wchar_t* clave, ArrCADENA_u** valores,
                                                     ArrPunteroConTipo** datos_valores) {
    const bool hay_valores = i_comprueba(valores != nullptr, "(valores) != NULL");
    const bool hay_datos = i_comprueba(datos_valores != nullptr, "(datos_valores) != NULL");
    objeto<ArrCADENA_u> nombres;
    objeto<ArrPunteroConTipo> datos;
    {
        const clave_abierta<wchar_t> abierta(apertura::en_vista(vista, raiz), clave, KEY_QUERY_VALUE);
        if (hay_valores && hay_datos && abierta.abierta()) {
            nombres = objeto<ArrCADENA_u>::crea();
            datos = objeto<ArrPunteroConTipo>::crea();
            i_lista_valores(abierta, a_vista(clave), nombres.get(), datos.get());
        }
    }
    const unsigned short leidos = nombres ? CIERTO : FALSO;
    if (hay_valores) {
        *valores = nombres.suelta();
    }
    if (hay_datos) {
        *datos_valores = datos.suelta();
    }
    return leidos;
}
