// See path_correcto.hpp.
#include "paths/path_correcto.hpp"

#include <algorithm>
#include <bit>
#include <optional>

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
constexpr unsigned longitud_maxima_reservada = 8;

// Bit n of a unit: a reserved name of n units has it in first place, or in second. Few names get past both questions.
struct tabla_reservados {
    unsigned short primeras[256] = {};
    unsigned short segundas[256] = {};

    constexpr tabla_reservados() {
        for (const vista_a nombre : nombres_reservados) {
            const auto bit = static_cast<unsigned short>(1u << nombre.size());
            for (const char c : {nombre[0], minuscula_ascii(nombre[0])}) {
                primeras[static_cast<unsigned char>(c)] |= bit;
            }
            for (const char c : {nombre[1], minuscula_ascii(nombre[1])}) {
                segundas[static_cast<unsigned char>(c)] |= bit;
            }
        }
    }
};
constexpr tabla_reservados reservados;

// The lengths of the reserved names that may begin so; the upper half of a unit is left to who compares the whole.
template <class C>
constexpr unsigned i_longitudes_reservadas(C primera, C segunda) noexcept {
    return static_cast<unsigned>(reservados.primeras[static_cast<unsigned char>(primera)] &
                                 reservados.segundas[static_cast<unsigned char>(segunda)]);
}

// `tronco` is a component up to its first point: "CON" and "CON.anything" are the device, "CONFIG" is not.
template <class C>
bool i_es_reservado(vista<C> tronco) noexcept {
    if (tronco.size() < 2 || tronco.size() > longitud_maxima_reservada ||
        (i_longitudes_reservadas(tronco[0], tronco[1]) >> tronco.size() & 1) == 0) {
        return false;
    }
    for (const vista_a reservado : nombres_reservados) {
        std::size_t i = 0;
        while (i < tronco.size() && reservado.size() == tronco.size() &&
               minuscula_ascii(tronco[i]) == static_cast<C>(minuscula_ascii(reservado[i]))) {
            ++i;
        }
        if (i == tronco.size()) {
            return true;
        }
    }
    return false;
}

// Those of the first so many of 64 units.
constexpr bits los_primeros(std::size_t num) noexcept {
    return num < 64 ? (bits{1} << num) - 1 : ~bits{0};
}

constexpr std::size_t limite_componente =
    lmlongpath_get_longitud_maxima_permitida_componente_incluido_extension();

// The rules on a component whose characters are known to be valid and whose trailing blanks are cut.
template <class C>
bool i_componente_correcto(vista<C> nombre) noexcept {
    return !nombre.empty() && nombre.size() <= limite_componente &&
           !i_es_reservado(nombre.substr(0, nombre.find(C('.'))));
}

// A final point is taken only where the path begins or ends with a relative part; that only the last character
// is looked at, and never the first, is meant so.
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

// The rules on the components of a path, in one walk over its notes.
template <class C>
class examen_de_componentes {
public:
    // The components begin behind the drive.
    examen_de_componentes(vista<C> path, std::size_t tras_unidad) noexcept
        : path_(path), tras_unidad_(tras_unidad), num_(tras_unidad > 0 ? 1 : 0), fichero_(tras_unidad) {
        const notas_de_vista<C> notas(path);
        notas_de_64 esta = notas(0);
        // The drive is none of the components; its colon is where one may be.
        const bits antes = (bits{1} << tras_unidad) - 1;
        esta.separador |= antes;
        esta.raro &= ~antes;
        bits tras_separador = 1;
        for (std::size_t desde = 0; desde < path.size(); desde += 64) {
            const notas_de_64 otra = notas(desde + 64);
            alguno_raro_ |= esta.raro;
            alguno_alto_ |= esta.alto;
            i_examina(desde, esta, otra, ~esta.separador & (esta.separador << 1 | tras_separador));
            tras_separador = esta.separador >> 63;
            esta = otra;
        }
        if (path.size() - tras_unidad > limite_componente) {
            i_busca_largos();
        }
    }

    bool es_ascii() const noexcept { return alguno_alto_ == 0; }
    bool hay_raros() const noexcept { return alguno_raro_ != 0; }
    // What no rule refuses, with no such character in any.
    bool correctos() const noexcept { return correctos_ && !hay_raros(); }
    // The drive counts as one.
    std::size_t num() const noexcept { return num_; }

    // The pieces of a path that is correct.
    trozos_de_ruta<C> trozos() const noexcept {
        const std::size_t punto = tras_fin_ > fichero_ ? tras_fin_ - 1 : path_.size();
        return {path_.substr(0, tras_unidad_), path_.substr(tras_unidad_, fichero_ - tras_unidad_),
                path_.substr(fichero_, punto - fichero_), path_.substr(punto)};
    }

private:
    void i_examina(std::size_t desde, const notas_de_64& esta, const notas_de_64& otra,
                   bits principios) noexcept {
        const bits fines = esta.separador | esta.punto;
        const bits dentro = los_primeros(path_.size() - desde);
        const bits separadores = esta.separador & dentro;
        fichero_ =
            separadores != 0 ? desde + static_cast<std::size_t>(std::bit_width(separadores)) : fichero_;
        const bits acaban = fines & dentro;
        tras_fin_ = acaban != 0 ? desde + static_cast<std::size_t>(std::bit_width(acaban)) : tras_fin_;
        const bits otros_fines = otra.separador | otra.punto;
        for (; principios != 0; principios &= principios - 1) {
            ++num_;
            const auto i = static_cast<unsigned>(std::countr_zero(principios));
            // How far it is to the first point or to the end, if that is near.
            const bits ventana = fines >> i | otros_fines << 1 << (63 - i);
            const auto longitud =
                static_cast<unsigned>(std::countr_zero(ventana | bits{2} << longitud_maxima_reservada));
            const std::size_t donde = desde + i;
            const C* const tronco = path_.data() + donde;
            const bool es_el_ultimo = donde + 1 == path_.size();
            if ((i_longitudes_reservadas(tronco[0], tronco[es_el_ultimo ? 0 : 1]) >> longitud & 1) != 0) {
                correctos_ = correctos_ && !i_es_reservado(vista<C>(tronco, longitud));
            }
        }
        // Blanks at the end of a component do not belong to it: what is left is judged by itself.
        bits recortados = esta.blanco & (esta.separador >> 1 | otra.separador << 63);
        for (; recortados != 0; recortados &= recortados - 1) {
            i_examina_recortado(desde + static_cast<unsigned>(std::countr_zero(recortados)));
        }
    }
    void i_examina_recortado(std::size_t ultimo_blanco) noexcept {
        const vista<C> hasta = path_.substr(tras_unidad_, ultimo_blanco + 1 - tras_unidad_);
        std::size_t principio = hasta.size();
        while (principio > 0 && !es_separador(hasta[principio - 1])) {
            --principio;
        }
        correctos_ = correctos_ && i_componente_correcto(recorta_derecha(hasta.substr(principio)));
    }
    // Only a path that is longer than a component may be has one that is too long.
    void i_busca_largos() noexcept {
        std::size_t principio = tras_unidad_;
        for (std::size_t i = tras_unidad_; i <= path_.size(); ++i) {
            if (i == path_.size() || es_separador(path_[i])) {
                if (i - principio > limite_componente) {
                    const vista<C> componente = path_.substr(principio, i - principio);
                    correctos_ = correctos_ && i_componente_correcto(recorta_derecha(componente));
                }
                principio = i + 1;
            }
        }
    }

    vista<C> path_;
    std::size_t tras_unidad_;
    std::size_t num_;
    std::size_t fichero_;       // where the file name begins
    std::size_t tras_fin_ = 0;  // behind the last separator or point
    bool correctos_ = true;
    bits alguno_raro_ = 0;
    bits alguno_alto_ = 0;
};

veredicto i_falla(ConstructorMensaje motivo, bool es_unc = false) noexcept {
    return {false, es_unc, motivo};
}

// Nothing for 8-bit text that is to be judged in UTF-16. `trozos`, when wanted, receives the pieces of a path that is
// correct.
template <class C>
std::optional<veredicto> i_examina(vista<C> path, bool puede_ser_vacio,
                                   trozos_de_ruta<C>* trozos = nullptr) noexcept {
    if (path.empty()) {
        return puede_ser_vacio ? veredicto{.correcto = true} : i_falla(i_msg_53960_sin_nombre_de_directorio);
    }
    // Where a character may take several bytes, lengths are counted in UTF-16.
    const bool son_unidades = sizeof(C) > 1 || i_escritura() == escritura::de_un_byte;
    if (path.size() > lmlongpath_get_longitud_maxima_permitida_path()) {
        return son_unidades ? std::optional(i_falla(i_msg_374376_path_demasiado_largo)) : std::nullopt;
    }
    const bool con_unidad = path.size() > 1 && path[1] == C(':') && lmstdc_isalpha(path[0]);
    const examen_de_componentes<C> componentes(path, con_unidad ? 2 : 0);
    if (!son_unidades && !componentes.es_ascii()) {
        return std::nullopt;
    }
    if (!con_unidad && componentes.hay_raros() && path.find(C(':')) != vista<C>::npos) {
        return i_falla(i_msg_53958_unidad_debe_ser_letra);
    }
    if (path.back() == C('.') && !i_punto_final_admitido(path)) {
        return i_falla(i_msg_53957_punto_al_principio_o_final);
    }
    const vista<C> resto = path.substr(con_unidad ? 2 : 0);
    const bool es_unc = resto.size() > 2 && empieza_por(resto, LITERAL(C, "\\\\"));
    if (!componentes.correctos()) {
        return i_falla(i_msg_53949_caracteres_no_validos_en_nombre, es_unc);
    }
    if (es_unc && componentes.num() < 2) {
        return i_falla(i_msg_53959_unidad_de_red_incompleta, es_unc);
    }
    if (trozos != nullptr) {
        *trozos = componentes.trozos();
    }
    return veredicto{.correcto = true, .es_unc = es_unc};
}

// The component that a path is refused for, without its trailing blanks.
vista_w i_primer_componente_incorrecto(vista_w path) noexcept {
    vista_w resto = path.substr(path.size() > 1 && path[1] == L':' ? 2 : 0);
    for (;;) {
        const std::size_t fin = static_cast<std::size_t>(
            std::find_if(resto.begin(), resto.end(), es_separador<wchar_t>) - resto.begin());
        const vista_w componente = resto.substr(0, fin);
        if (!componente.empty() && !i_nombre_base_valido_UNICODE(componente)) {
            return recorta_derecha(componente);
        }
        if (fin == resto.size()) {
            return {};  // GCOVR_EXCL_LINE: asked only of a path that has one
        }
        resto.remove_prefix(fin + 1);
    }
}

}  // namespace

bool i_caracter_valido(wchar_t c) noexcept {
    const notas_de_64 n = i_notas_llanas(vista_w(&c, 1));
    return (n.raro | n.separador) == 0 || c == 0;
}

bool i_caracter_valido(char c) noexcept {
    return i_caracter_valido(static_cast<wchar_t>(static_cast<unsigned char>(c)));
}

bool i_caracteres_validos_UNICODE(vista_w texto) noexcept {
    return std::all_of(texto.begin(), texto.end(), [](wchar_t c) { return i_caracter_valido(c); });
}

bool i_nombre_base_correcto_UNICODE(vista_w nombre) noexcept {
    nombre = recorta_derecha(nombre);
    return i_caracteres_validos_UNICODE(nombre) && i_componente_correcto(nombre);
}

bool i_nombre_base_valido_UNICODE(vista_w nombre) noexcept {
    return i_es_punto_o_dos(nombre) || i_nombre_base_correcto_UNICODE(nombre);
}

veredicto i_path_correcto_UNICODE(vista_w path, bool puede_ser_vacio) {
    return i_comprueba(path.data() != nullptr, "(path_sin_espacios) != NULL")
               ? *i_examina(path, puede_ser_vacio)
               : veredicto();
}

veredicto i_path_correcto(vista_a path, bool puede_ser_vacio) {
    if (path.data() == nullptr) {
        return i_path_correcto_UNICODE({});
    }
    const std::optional<veredicto> juicio = i_examina(path, puede_ser_vacio);
    return juicio ? *juicio : i_path_correcto_UNICODE(utf16_temporal(path).ver(), puede_ser_vacio);
}

cadena_w i_texto_del_fallo(const veredicto& juicio, vista_w path) {
    const bool es_de_componente = juicio.motivo == i_msg_53949_caracteres_no_validos_en_nombre;
    return i_mensaje(juicio.motivo, {es_de_componente ? i_primer_componente_incorrecto(path) : path,
                                     lmlongpath_get_longitud_maxima_permitida_path()});
}

namespace {

// 53949 is never shown, only handed back. Over-long names are among those.
bool i_se_muestra(const veredicto& juicio) noexcept {
    return juicio.motivo != nullptr && juicio.motivo != i_msg_53949_caracteres_no_validos_en_nombre &&
           !i_modo_servicio();
}

veredicto i_correcto(vista_w path) {
    return i_path_correcto_UNICODE(path);
}
veredicto i_correcto(vista_a path) {
    return i_path_correcto(path);
}

}  // namespace

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
    const std::optional<veredicto> juicio = i_examina(path, false, &juzgado.trozos);
    if (!juicio || !juicio->correcto) {
        juzgado.trozos = crt_splitpath(path);
    }
    juzgado.juicio = juicio ? *juicio : i_correcto(path);
    return juzgado;
}

// No wildcard is in a path that is correct as it stands.
template <class C>
path_juzgado<C> i_juzga_con_comodines(vista<C> path) {
    path_juzgado<C> juzgado;
    if (const std::optional<veredicto> juicio = i_examina(path, false, &juzgado.trozos);
        juicio && juicio->correcto) {
        juzgado.juicio = *juicio;
        return juzgado;
    }
    const trozos_de_ruta<C> trozos = crt_splitpath(path);
    juzgado.trozos = trozos;
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
