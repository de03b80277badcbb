// See path_correcto.hpp.
#include "paths/path_correcto.hpp"

#include <algorithm>
#include <bit>
#include <cstdint>

#include "companions/caracteres.hpp"
#include "companions/crt_rutas.hpp"
#include "companions/error_interno.hpp"
#include "companions/limites.hpp"
#include "companions/unicode.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "paths/notas.hpp"

namespace interno {
namespace {

// The family's own names (the last three) are reserved like those of the system.
constexpr vista_a nombres_reservados[] = {"CON",      "NUL",      "LPT1",     "LPT2",     "LPT3",
                                          "PRN",      "COM1",     "COM2",     "COM3",     "COM4",
                                          "AUX",      "CLOCK$",   "IFS$HLP$", "SETVERXX", "$MMXXXX0",
                                          "&MMXXXX0", "XMSXXXX0", "LUMOGR",   "KORAX",    "LUMODEV"};
constexpr unsigned longitud_minima_reservada = 3;
constexpr unsigned longitud_maxima_reservada = 8;

// Bit n of a unit: some reserved name of n units has that unit in second place, or in the last one. Hardly any other name
// gets past both questions.
struct tabla_reservados {
    std::uint16_t segundas[256] = {};
    std::uint16_t ultimas[256] = {};

    consteval tabla_reservados() {
        for (const vista_a nombre : nombres_reservados) {
            const auto bit = static_cast<std::uint16_t>(1u << nombre.size());
            for (const char c : {nombre[1], minuscula_ascii(nombre[1])}) {
                segundas[static_cast<unsigned char>(c)] |= bit;
            }
            for (const char c : {nombre.back(), minuscula_ascii(nombre.back())}) {
                ultimas[static_cast<unsigned char>(c)] |= bit;
            }
        }
    }
};
constexpr tabla_reservados reservados;

// For a stem that is as long as some reserved name. The upper half of a unit does not count here: the comparison of the
// whole name decides.
template <class C>
constexpr bool i_parece_reservado(vista<C> tronco) noexcept {
    const unsigned longitudes =
        static_cast<unsigned>(reservados.segundas[static_cast<unsigned char>(tronco[1])] &
                              reservados.ultimas[static_cast<unsigned char>(tronco.back())]);
    return (longitudes >> tronco.size() & 1) != 0;
}

// `tronco` is a component up to its first dot: "CON" and "CON.anything" are the device, "CONFIG" is not.
template <class C>
bool i_es_reservado(vista<C> tronco) noexcept {
    return tronco.size() >= longitud_minima_reservada && tronco.size() <= longitud_maxima_reservada &&
           i_parece_reservado(tronco) &&
           std::any_of(
               std::begin(nombres_reservados), std::end(nombres_reservados), [tronco](vista_a reservado) {
                   return std::equal(
                       tronco.begin(), tronco.end(), reservado.begin(), reservado.end(),
                       [](C a, char b) { return minuscula_ascii(a) == static_cast<C>(minuscula_ascii(b)); });
               });
}

constexpr std::size_t limite_componente =
    lmlongpath_get_longitud_maxima_permitida_componente_incluido_extension();

// The rules on a component whose characters are known to be valid and whose trailing blanks are cut.
template <class C>
bool i_componente_correcto(vista<C> nombre) noexcept {
    return !nombre.empty() && nombre.size() <= limite_componente &&
           !i_es_reservado(nombre.substr(0, nombre.find(C('.'))));
}

// A final dot is accepted only where the path begins or ends with a relative part. Only the last character is looked
// at, never the first: `.profile` is a name.
template <class C>
bool i_punto_final_admitido(vista<C> path) noexcept {
    // "./", ".\", "../", "..\" at the front; "/.", "\.", "/..", "\.." at the end.
    std::size_t delante = 0;
    while (delante < 2 && delante < path.size() && es_punto(path[delante])) {
        ++delante;
    }
    if (delante > 0 && delante < path.size() && es_separador(path[delante])) {
        return true;
    }
    std::size_t detras = 1;
    if (path.size() > 1 && es_punto(path[path.size() - 2])) {
        detras = 2;
    }
    return path.size() > detras && es_separador(path[path.size() - detras - 1]);
}

// Where a stem begins that is as long as some reserved name, among those of which the whole window stands in the block
// or the text ends there. `siguen` are the units that end no stem.
constexpr bits i_como_reservados(bits principios, bits siguen) noexcept {
    static_assert(longitud_minima_reservada == 3 && longitud_maxima_reservada == 8);
    const bits siguen_dos = siguen & siguen >> 1;
    const bits siguen_tres = siguen_dos & siguen >> 2;
    const bits siguen_seis = siguen_dos & siguen_dos >> 2 & siguen_dos >> 4;
    return principios & siguen_tres & ~(siguen_seis >> 3);
}

// Blanks at the end of a component do not belong to it: what is left is judged by itself.
template <class C>
bool i_recortado_correcto(vista<C> hasta_los_blancos) noexcept {
    std::size_t principio = hasta_los_blancos.size();
    while (principio > 0 && !es_separador(hasta_los_blancos[principio - 1])) {
        --principio;
    }
    return i_componente_correcto(recorta_derecha(hasta_los_blancos.substr(principio)));
}

// Asked only about a path that is longer than one component may be.
template <class C>
bool i_hay_largos(vista<C> componentes) noexcept {
    std::size_t principio = 0;
    for (std::size_t i = 0; i <= componentes.size(); ++i) {
        if (i == componentes.size() || es_separador(componentes[i])) {
            if (i - principio > limite_componente &&
                !i_componente_correcto(recorta_derecha(componentes.substr(principio, i - principio)))) {
                return true;
            }
            principio = i + 1;
        }
    }
    return false;
}

// The last units of a block that are looked at again in the next one, so that a reserved name is whole in one of them.
constexpr std::size_t solape = longitud_maxima_reservada;
constexpr std::size_t paso = unidades_de_bloque - solape;

// What one walk over the notes of a path finds of its components.
struct hallazgo {
    bool correctos = true;  // no rule refuses any, but for characters that no name may hold
    bits raro = 0;          // any of those
    bool varios = false;    // the first block has more than one
    std::size_t desde = 0;  // where the last block begins
    bits separador = 0;     // of that block
    bits punto = 0;
};

// The components begin behind the drive.
template <class C>
hallazgo i_recorre(vista<C> path, std::size_t tras_unidad) noexcept {
    hallazgo h;
    // The drive is none of the components; its colon is where one may be.
    bits fuera = los_primeros(tras_unidad);
    bits tras_separador = 1;
    for (;;) {
        const std::size_t quedan = path.size() - h.desde;
        const notas_de_64 n = i_notas(path.substr(h.desde));
        h.raro |= n.raro & ~fuera;
        h.separador = n.separador | fuera;
        h.punto = n.punto;
        // What lies behind the text ends a component as a separator does.
        const bits separadores = h.separador | ~los_primeros(quedan);
        const bits juzgadas = quedan > unidades_de_bloque ? los_primeros(paso) : ~bits{0};
        const bits principios = ~separadores & (separadores << 1 | tras_separador) & juzgadas;
        const bits siguen = ~(separadores | n.punto);
        for (bits r = i_como_reservados(principios, siguen); r != 0; r &= r - 1) {
            const auto i = static_cast<unsigned>(std::countr_zero(r));
            const vista<C> tronco(path.data() + h.desde + i,
                                  static_cast<unsigned>(std::countr_zero(~(siguen >> i))));
            h.correctos = h.correctos && !(i_parece_reservado(tronco) && i_es_reservado(tronco));
        }
        // Where the blanks at the end of a component end.
        for (bits r = n.blanco & ~(~separadores >> 1) & juzgadas; r != 0; r &= r - 1) {
            const std::size_t tras_blancos = h.desde + static_cast<unsigned>(std::countr_zero(r)) + 1;
            h.correctos =
                h.correctos && i_recortado_correcto(path.substr(0, tras_blancos).substr(tras_unidad));
        }
        if (h.desde == 0) {
            h.varios = (principios & (principios - 1)) != 0;
        }
        if (quedan <= unidades_de_bloque) {
            return h;
        }
        tras_separador = separadores >> (paso - 1) & 1;
        fuera = 0;
        h.desde += paso;
    }
}

// A network path names a server and a share; a drive before it counts as one of them.
template <class C>
bool i_nombra_recurso(vista<C> path, std::size_t tras_unidad, const hallazgo& h) noexcept {
    const vista<C> resto = path.substr(tras_unidad);
    return h.varios || !extrae_token(resto, tras_unidad > 0 ? 1 : 2, LITERAL(C, "\\/")).empty();
}

// Where a correct path is cut.
template <class C>
cortes_de_ruta i_cortes_anotados(vista<C> path, std::size_t tras_unidad, const hallazgo& h) noexcept {
    if (h.separador == 0) {
        return i_cortes(path);
    }
    const std::size_t nombre = h.desde + static_cast<std::size_t>(std::bit_width(h.separador));
    const bits puntos = h.punto & ~(bits{2} * std::bit_floor(h.separador) - 1);
    return {tras_unidad, nombre,
            puntos != 0 ? h.desde + static_cast<std::size_t>(std::bit_width(puntos)) - 1 : path.size()};
}

constexpr veredicto i_falla(ConstructorMensaje motivo, bool es_unc = false) noexcept {
    return {false, es_unc, motivo};
}

// The rules on a path whose units are characters. `cortes`, when wanted, receives where a path is cut that is correct.
template <class C>
veredicto i_examina(vista<C> path, bool puede_ser_vacio, cortes_de_ruta* cortes) noexcept {
    if (path.empty()) {
        return puede_ser_vacio ? veredicto{.correcto = true} : i_falla(i_msg_53960_sin_nombre_de_directorio);
    }
    if (path.size() > lmlongpath_get_longitud_maxima_permitida_path()) {
        return i_falla(i_msg_374376_path_demasiado_largo);
    }
    const bool con_unidad = path.size() > 1 && path[1] == C(':') && lmstdc_isalpha(path[0]);
    const std::size_t tras_unidad = con_unidad ? 2 : 0;
    const hallazgo h = i_recorre(path, tras_unidad);
    const vista<C> resto = path.substr(tras_unidad);
    const bool es_unc = resto.size() > 2 && es_barra(resto[0]) && es_barra(resto[1]);
    const bool hay_largos = resto.size() > limite_componente && i_hay_largos(resto);
    if (h.raro != 0 && !con_unidad && path.find(C(':')) != vista<C>::npos) {
        return i_falla(i_msg_53958_unidad_debe_ser_letra);
    }
    if (path.back() == C('.') && !i_punto_final_admitido(path)) {
        return i_falla(i_msg_53957_punto_al_principio_o_final);
    }
    if (h.raro != 0 || !h.correctos || hay_largos) {
        return i_falla(i_msg_53949_caracteres_no_validos_en_nombre, es_unc);
    }
    if (es_unc && !i_nombra_recurso(path, tras_unidad, h)) {
        return i_falla(i_msg_53959_unidad_de_red_incompleta, es_unc);
    }
    if (cortes != nullptr) {
        *cortes = i_cortes_anotados(path, tras_unidad, h);
    }
    return {.correcto = true, .es_unc = es_unc};
}

// 8-bit text with characters that may take several bytes is judged by its bytes, and converted only where a limit may
// depend on it: lengths count units of UTF-16.
template <class Juzga>
auto i_juzga_largos(vista_a texto, Juzga juzga) noexcept {
    if (texto.size() > limite_componente) {
        return juzga(utf16_temporal(texto).ver());
    }
    char copia[limite_componente];
    i_copia_sin_segundos(texto, copia);
    return juzga(vista_a(copia, texto.size()));
}

veredicto i_examina_path(vista_w path, bool puede_ser_vacio, cortes_de_ruta* cortes) noexcept {
    return i_examina(path, puede_ser_vacio, cortes);
}
veredicto i_examina_path(vista_a path, bool puede_ser_vacio, cortes_de_ruta* cortes) noexcept {
    if (!i_puede_tener_caracteres_largos(path)) {
        return i_examina(path, puede_ser_vacio, cortes);
    }
    return i_juzga_largos(path, [=]<class C>(vista<C> texto) {
        const veredicto juicio = i_examina(texto, puede_ser_vacio, cortes);
        if (es_ancho<C> && cortes != nullptr) {
            *cortes = i_cortes(path);
        }
        return juicio;
    });
}

veredicto i_correcto(vista_w path) {
    return i_path_correcto_UNICODE(path);
}
veredicto i_correcto(vista_a path) {
    return i_path_correcto(path);
}

// The characters that a name may hold, by their numbers, where these are below 256.
struct tabla_validos {
    bool vale[256] = {};

    consteval tabla_validos() {
        for (unsigned c = 0; c < 256; ++c) {
            const auto unidad = static_cast<wchar_t>(c);
            const notas_de_64 n = i_notas_llanas(vista_w(&unidad, 1));
            vale[c] = c == 0 || (n.raro | n.separador) == 0;
        }
    }
};
constexpr tabla_validos validos;

template <class C>
bool i_todos_validos(vista<C> texto) noexcept {
    return std::all_of(texto.begin(), texto.end(), [](C c) { return i_caracter_valido(c); });
}

template <class C>
bool i_nombre_correcto(vista<C> nombre) noexcept {
    nombre = recorta_derecha(nombre);
    return i_todos_validos(nombre) && i_componente_correcto(nombre);
}

// The component that a path is refused for, without its trailing blanks.
vista_w i_primer_componente_incorrecto(vista_w path) noexcept {
    vista_w resto = path.substr(path.size() > 1 && path[1] == L':' ? 2 : 0);
    for (;;) {
        const std::size_t fin = static_cast<std::size_t>(
            std::find_if(resto.begin(), resto.end(), es_separador<wchar_t>) - resto.begin());
        const vista_w componente = resto.substr(0, fin);
        if (!componente.empty() && !i_nombre_correcto(componente)) {
            return recorta_derecha(componente);
        }
        if (fin == resto.size()) {
            return {};  // GCOVR_EXCL_LINE: asked only of a path that has one
        }
        resto.remove_prefix(fin + 1);
    }
}

// 53949 is never shown, only handed back. Over-long names are among those.
bool i_se_muestra(const veredicto& juicio) noexcept {
    return juicio.motivo != nullptr && juicio.motivo != i_msg_53949_caracteres_no_validos_en_nombre &&
           !i_modo_servicio();
}

}  // namespace

bool i_caracter_valido(wchar_t c) noexcept {
    return c >= std::size(validos.vale) || validos.vale[c];
}
bool i_caracter_valido(char c) noexcept {
    return validos.vale[static_cast<unsigned char>(c)];
}

bool i_caracteres_validos_UNICODE(vista_w texto) noexcept {
    return i_todos_validos(texto);
}
bool i_caracteres_validos(vista_a texto) noexcept {
    return i_puede_tener_caracteres_largos(texto)
               ? i_juzga_largos(texto, [](auto unidades) { return i_todos_validos(unidades); })
               : i_todos_validos(texto);
}

bool i_nombre_base_correcto_UNICODE(vista_w nombre) noexcept {
    return i_nombre_correcto(nombre);
}
bool i_nombre_base_correcto(vista_a nombre) noexcept {
    return i_puede_tener_caracteres_largos(nombre)
               ? i_juzga_largos(nombre, [](auto unidades) { return i_nombre_correcto(unidades); })
               : i_nombre_correcto(nombre);
}

veredicto i_path_correcto_UNICODE(vista_w path, bool puede_ser_vacio) {
    return i_comprueba(path.data() != nullptr, "(path_sin_espacios) != NULL")
               ? i_examina_path(path, puede_ser_vacio, nullptr)
               : veredicto{};
}
veredicto i_path_correcto(vista_a path, bool puede_ser_vacio) {
    return path.data() != nullptr ? i_examina_path(path, puede_ser_vacio, nullptr)
                                  : i_path_correcto_UNICODE({});
}

cadena_w i_texto_del_fallo(const veredicto& juicio, vista_w path) {
    const bool es_de_componente = juicio.motivo == i_msg_53949_caracteres_no_validos_en_nombre;
    return i_mensaje(juicio.motivo, {es_de_componente ? i_primer_componente_incorrecto(path) : path,
                                     lmlongpath_get_longitud_maxima_permitida_path()});
}

void i_muestra_fallo(const veredicto& juicio, vista_w path) {
    if (i_se_muestra(juicio)) {
        i_muestra_texto(i_texto_del_fallo(juicio, path).c_str());
    }
}

void i_muestra_fallo(const veredicto& juicio, vista_a path) {
    if (i_se_muestra(juicio)) {
        i_muestra_fallo(juicio, utf16_temporal(path).ver());
    }
}

template <class C>
path_juzgado<C> i_juzga(vista<C> path) {
    path_juzgado<C> juzgado;
    juzgado.path = path;
    juzgado.juicio = i_examina_path(path, false, &juzgado.cortes);
    if (!juzgado.juicio.correcto) {
        juzgado.cortes = i_cortes(path);
    }
    return juzgado;
}

// No wildcard is in a path that is correct as it stands.
template <class C>
path_juzgado<C> i_juzga_con_comodines(vista<C> path) {
    path_juzgado<C> juzgado;
    juzgado.path = path;
    juzgado.juicio = i_examina_path(path, false, &juzgado.cortes);
    if (juzgado.juicio.correcto) {
        return juzgado;
    }
    juzgado.cortes = i_cortes(path);
    const trozos_de_ruta<C> trozos = juzgado.trozos();
    const bool nombre_comodin = trozos.nombre == LITERAL(C, "*");
    if (trozos.extension == LITERAL(C, ".*")) {
        path.remove_suffix(trozos.extension.size() + (nombre_comodin ? trozos.nombre.size() : 0));
    } else if (nombre_comodin) {
        const cadena<C> probado =
            concatena<C>({trozos.unidad, trozos.directorio, LITERAL(C, "comprobar"), trozos.extension});
        juzgado.juicio = i_correcto(probado.ver());
        return juzgado;
    }
    juzgado.juicio = i_correcto(path);
    return juzgado;
}

template path_juzgado<char> i_juzga(vista<char>);
template path_juzgado<wchar_t> i_juzga(vista<wchar_t>);
template path_juzgado<char> i_juzga_con_comodines(vista<char>);
template path_juzgado<wchar_t> i_juzga_con_comodines(vista<wchar_t>);

}  // namespace interno
