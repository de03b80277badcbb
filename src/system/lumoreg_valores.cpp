// See lumoreg_valores.hpp.
#include "system/lumoreg_valores.hpp"

#include "system/multicadena.hpp"

namespace interno {
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

objeto<ArrCADENA_u> i_textos_del_valor(DWORD tipo, vista_w datos) noexcept {
    objeto<ArrCADENA_u> textos = objeto<ArrCADENA_u>::crea();
    if (tipo == REG_SZ) {
        textos->anade(cadena_w(i_hasta_terminador(datos)));
    } else {
        i_para_cada_trozo(datos, [&](vista_w trozo) { textos->anade(cadena_w(trozo)); });
    }
    return textos;
}

}  // namespace

bool i_escribe(const clave_abierta<wchar_t>& clave, const wchar_t* nombre_valor, DWORD tipo, const void* dato,
               std::size_t bytes) noexcept {
    return sistema.RegSetValueExW(clave.get(), nombre_valor, 0, tipo, static_cast<const BYTE*>(dato),
                                  static_cast<DWORD>(bytes)) == ERROR_SUCCESS;
}

bool i_escribe_cadena(const clave_abierta<wchar_t>& clave, const wchar_t* nombre_valor, DWORD tipo,
                      const wchar_t* dato) noexcept {
    return i_escribe(clave, nombre_valor, tipo, dato, (a_vista(dato).size() + 1) * sizeof(wchar_t));
}

void i_borra_valor(const clave_abierta<wchar_t>& clave, const wchar_t* nombre_valor) noexcept {
    clave.comprueba(sistema.RegDeleteValueW(clave.get(), nombre_valor));
}

template <class C>
cadena<C> i_lee_cadena(const clave_abierta<C>& clave, const C* nombre_valor) noexcept {
    const std::optional<censo_de_clave> censo = clave.cuenta();
    if (!censo || censo->num_valores == 0) {
        return {};
    }
    bufer_de_valor<C> bufer(censo->mayor_dato_bytes);
    DWORD bytes = 0;
    const auto lee = [&] {
        bytes = bufer.bytes();
        return (sistema.*llamadas_de<C>::lee_valor)(clave.get(), nombre_valor, nullptr, nullptr,
                                                    reinterpret_cast<BYTE*>(bufer.datos()), &bytes);
    };
    LSTATUS error = lee();
    // Written anew meanwhile, or 8-bit text that needs more bytes than the UTF-16 that was counted.
    while (error == ERROR_MORE_DATA && bytes > bufer.bytes()) {
        bufer.prepara(bytes);
        error = lee();
    }
    return error == ERROR_SUCCESS ? cadena<C>(i_hasta_terminador(bufer.texto(bytes))) : cadena<C>();
}

template cadena_a i_lee_cadena<char>(const clave_abierta<char>&, const char*) noexcept;
template cadena_w i_lee_cadena<wchar_t>(const clave_abierta<wchar_t>&, const wchar_t*) noexcept;

cadena_w i_lee_cadena(const apertura& como, const wchar_t* clave, const wchar_t* nombre_valor) noexcept {
    const clave_abierta<wchar_t> abierta(como, clave, KEY_QUERY_VALUE);
    return abierta.abierta() ? i_lee_cadena(abierta, nombre_valor) : cadena_w();
}

valores_de_clave i_lista_valores(const clave_abierta<wchar_t>& clave) noexcept {
    valores_de_clave valores = {objeto<ArrCADENA_u>::crea(), objeto<ArrPunteroConTipo>::crea()};
    const censo_de_clave censo = clave.cuenta().value_or(censo_de_clave{});
    const std::size_t sitio_nombre = censo.mayor_nombre_valor + 1;
    bufer_de_valor<wchar_t> nombre(sitio_nombre * sizeof(wchar_t));
    bufer_de_valor<wchar_t> datos(censo.mayor_dato_bytes);
    for (DWORD indice = 0; indice < censo.num_valores; ++indice) {
        auto longitud = static_cast<DWORD>(sitio_nombre);
        DWORD bytes = datos.bytes();
        DWORD tipo = REG_NONE;
        const LSTATUS status = sistema.RegEnumValueW(clave.get(), indice, nombre.datos(), &longitud, nullptr,
                                                     &tipo, reinterpret_cast<BYTE*>(datos.datos()), &bytes);
        if (i_comprueba_con(status == 0, "status == 0", clave.ruta()) &&
            (tipo == REG_SZ || tipo == REG_MULTI_SZ)) {
            valores.nombres->anade(cadena_w(vista_w(nombre.datos(), longitud)));
            valores.datos->punteros.anade(i_textos_del_valor(tipo, datos.texto(bytes)).suelta());
        }
    }
    return valores;
}

}  // namespace interno
