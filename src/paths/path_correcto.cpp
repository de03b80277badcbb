// See path_correcto.hpp.
#include "paths/path_correcto.hpp"

#include "cdir.h"
#include "companions/crt_rutas.hpp"
#include "companions/error_interno.hpp"
#include "companions/limites.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "frame/puente.hpp"

namespace lumodir {
namespace {

// What a unit means to the checker; units above ASCII mean nothing.
enum clase : unsigned char {
    clase_invalido = 1,   // control characters and *"?<>|
    clase_separador = 2,  // \ and /
    clase_dos_puntos = 4,
    clase_punto = 8,
    clase_fin = 16  // the terminator
};

// The family's own names (the last three) are reserved like those of the system.
constexpr vista_w nombres_reservados[] = {L"CON",      L"NUL",      L"LPT1",     L"LPT2",     L"LPT3",
                                          L"PRN",      L"COM1",     L"COM2",     L"COM3",     L"COM4",
                                          L"AUX",      L"CLOCK$",   L"IFS$HLP$", L"SETVERXX", L"$MMXXXX0",
                                          L"&MMXXXX0", L"XMSXXXX0", L"LUMOGR",   L"KORAX",    L"LUMODEV"};

struct tabla_unidades {
    unsigned char clase[128] = {};
    // Bit n: a reserved name of n units begins with this unit. Few names get past this question.
    unsigned short longitudes_reservadas[128] = {};

    constexpr tabla_unidades() {
        clase[0] = clase_fin;
        for (int c = 1; c < 32; ++c) {
            clase[c] = clase_invalido;
        }
        for (const char c : {'*', '"', '?', '<', '>', '|'}) {
            clase[static_cast<int>(c)] = clase_invalido;
        }
        clase[static_cast<int>('\\')] = clase[static_cast<int>('/')] = clase_separador;
        clase[static_cast<int>(':')] = clase_dos_puntos;
        clase[static_cast<int>('.')] = clase_punto;
        for (const vista_w nombre : nombres_reservados) {
            const auto bit = static_cast<unsigned short>(1u << nombre.size());
            longitudes_reservadas[static_cast<int>(nombre[0])] |= bit;
            longitudes_reservadas[static_cast<int>(minuscula_ascii(nombre[0]))] |= bit;
        }
    }
};
constexpr tabla_unidades unidades;

constexpr unsigned i_clase(wchar_t c) noexcept {
    return static_cast<unsigned>(c) < 128 ? unidades.clase[c] : 0u;
}

// `tronco` is a component up to its first point: "CON" and "CON.anything" are the device, "CONFIG" is not.
bool i_es_reservado(vista_w tronco) noexcept {
    if (tronco.empty() || tronco.size() > 15 || static_cast<unsigned>(tronco[0]) >= 128 ||
        (unidades.longitudes_reservadas[tronco[0]] >> tronco.size() & 1) == 0) {
        return false;
    }
    for (const vista_w reservado : nombres_reservados) {
        if (iguales_sin_caja(tronco, reservado)) {
            return true;
        }
    }
    return false;
}

constexpr std::size_t limite_componente =
    lmlongpath_get_longitud_maxima_permitida_componente_incluido_extension();

// The rules on a component whose characters are known to be valid and whose trailing blanks are cut.
bool i_componente_correcto(vista_w nombre) noexcept {
    return !nombre.empty() && nombre.size() <= limite_componente &&
           !i_es_reservado(nombre.substr(0, nombre.find(L'.')));
}

// One pass that knows the usual path: it answers CIERTO only for a path that every rule accepts, and leaves
// whatever is unusual (a blank or a point at an end, a share, ...) to the rules themselves. The text ends at its
// terminator, which saves the question at every unit, or else at `fin`.
template <bool terminado>
bool i_es_path_corriente(const wchar_t* path, const wchar_t* fin) noexcept {
    const auto en_clases = [fin](const wchar_t* q, unsigned clases) {
        return (terminado || q != fin) && (i_clase(*q) & ~clases) == 0;
    };
    const wchar_t* p = path;
    if (es_letra(p[0]) && p[1] == L':') {
        p += 2;
    }
    if (p[0] == L'\\' && p[1] == L'\\') {
        return false;
    }
    for (;;) {
        const wchar_t* const principio = p;
        while (en_clases(p, 0)) {
            ++p;
        }
        const wchar_t* const fin_tronco = p;
        while (en_clases(p, clase_punto)) {
            ++p;
        }
        const auto longitud = static_cast<std::size_t>(p - principio);
        if (longitud > 0 &&
            (p[-1] == L' ' || p[-1] == L'.' || longitud > limite_componente ||
             i_es_reservado(vista_w(principio, static_cast<std::size_t>(fin_tronco - principio))))) {
            return false;
        }
        if (terminado ? *p == L'\0' : p == fin) {
            return p != path && p - path <= lmlongpath_get_longitud_maxima_permitida_path();
        }
        if (!es_separador(*p)) {
            return false;
        }
        ++p;
    }
}

// A drive and the two units after it are looked at without asking for the end.
constexpr std::size_t minimo_corriente = 4;

bool i_es_punto_o_dos_puntos(vista_w nombre) noexcept {
    return nombre == L"." || nombre == L"..";
}

// A final point is taken only where the path begins or ends with a relative part; that only the last character
// is looked at, and never the first, is meant so.
bool i_punto_final_admitido(vista_w path) noexcept {
    for (const vista_w principio : {L"./", L".\\", L"../", L"..\\"}) {
        if (empieza_por(path, principio)) {
            return true;
        }
    }
    for (const vista_w final : {L"/.", L"\\.", L"/..", L"\\.."}) {
        if (acaba_en(path, final)) {
            return true;
        }
    }
    return false;
}

struct veredicto {
    ConstructorMensaje motivo = nullptr;  // NULL: the path is correct
    vista_w argumento;                    // of the message, where it has one
    unsigned short limite = 0;            // second argument of "too long"
    bool se_muestra = true;
    bool es_unc = false;
};

// The rules on the components of `resto` (the path after its drive).
veredicto i_examina_componentes(vista_w resto, bool algun_invalido) noexcept {
    veredicto fallo;
    std::size_t i = 0;
    while (i < resto.size()) {
        const std::size_t principio = i;
        while (i < resto.size() && !es_separador(resto[i])) {
            ++i;
        }
        const vista_w componente = resto.substr(principio, i - principio);
        ++i;
        if (componente.empty() || i_es_punto_o_dos_puntos(componente)) {
            continue;
        }
        const bool bien = algun_invalido ? i_nombre_base_correcto_UNICODE(componente)
                                         : i_componente_correcto(recorta_derecha(componente));
        if (!bien) {
            // Never shown, only handed back. Over-long names are among these too.
            fallo.motivo = i_msg_53949_caracteres_no_validos_en_nombre;
            fallo.argumento = recorta_derecha(componente);
            fallo.se_muestra = false;
            return fallo;
        }
    }
    return fallo;
}

veredicto i_examina(vista_w path, bool puede_ser_vacio) noexcept {
    veredicto juicio;
    if (path.empty() && !puede_ser_vacio) {
        juicio.motivo = i_msg_53960_sin_nombre_de_directorio;
        return juicio;
    }
    const unsigned short limite = lmlongpath_get_longitud_maxima_permitida_path();
    if (path.size() > limite) {
        juicio.motivo = i_msg_374376_path_demasiado_largo;
        juicio.argumento = path;
        juicio.limite = limite;
        return juicio;
    }
    unsigned presentes = 0;
    for (const wchar_t c : path) {
        presentes |= i_clase(c);
    }
    std::size_t tras_unidad = 0;
    if ((presentes & clase_dos_puntos) != 0) {
        if (path.size() < 2 || !es_letra(path[0]) || path[1] != L':') {
            juicio.motivo = i_msg_53958_unidad_debe_ser_letra;
            return juicio;
        }
        tras_unidad = 2;
    }
    if (!path.empty() && path.back() == L'.' && !i_punto_final_admitido(path)) {
        juicio.motivo = i_msg_53957_punto_al_principio_o_final;
        juicio.argumento = path;
        return juicio;
    }
    const vista_w resto = path.substr(tras_unidad);
    const bool es_unc = resto.size() > 2 && empieza_por(resto, L"\\\\");
    const bool otros_dos_puntos = tras_unidad > 0 && resto.find(L':') != vista_w::npos;
    juicio = i_examina_componentes(resto, (presentes & clase_invalido) != 0 || otros_dos_puntos);
    juicio.es_unc = es_unc;
    if (juicio.motivo == nullptr && es_unc && extrae_token(path, 2, L"\\/").empty()) {
        juicio.motivo = i_msg_53959_unidad_de_red_incompleta;
    }
    return juicio;
}

cadena_w i_texto(const veredicto& juicio) {
    return i_mensaje(juicio.motivo, {juicio.argumento, juicio.limite});
}

}  // namespace

bool i_caracter_valido(wchar_t c) noexcept {
    return (i_clase(c) & (clase_invalido | clase_separador | clase_dos_puntos)) == 0;
}

bool i_caracter_valido(char c) noexcept {
    return i_caracter_valido(static_cast<wchar_t>(static_cast<unsigned char>(c)));
}

bool i_nombre_base_correcto_UNICODE(vista_w nombre) noexcept {
    nombre = recorta_derecha(nombre);
    for (const wchar_t c : nombre) {
        if (!i_caracter_valido(c)) {
            return false;
        }
    }
    return i_componente_correcto(nombre);
}

bool i_nombre_base_valido_UNICODE(vista_w nombre) noexcept {
    return i_es_punto_o_dos_puntos(nombre) || i_nombre_base_correcto_UNICODE(nombre);
}

unsigned short i_path_correcto_UNICODE(vista_w path, unsigned short puede_ser_vacio,
                                       unsigned short mostrar_mensaje, unsigned short* es_unc,
                                       wchar_t** mensaje) {
    if (es_unc != nullptr) {
        *es_unc = FALSO;
    }
    if (!i_comprueba(path.data() != nullptr, "(path_sin_espacios) != NULL")) {
        return FALSO;
    }
    if (path.size() >= minimo_corriente &&
        i_es_path_corriente<false>(path.data(), path.data() + path.size())) {
        return CIERTO;
    }
    const veredicto juicio = i_examina(path, puede_ser_vacio == CIERTO);
    if (es_unc != nullptr) {
        *es_unc = juicio.es_unc ? CIERTO : FALSO;
    }
    if (juicio.motivo == nullptr) {
        return CIERTO;
    }
    if (mostrar_mensaje == CIERTO && juicio.se_muestra && !i_modo_servicio()) {
        i_muestra_texto(i_texto(juicio).c_str());
    }
    if (mensaje != nullptr) {
        *mensaje = i_texto(juicio).suelta();
    }
    return FALSO;
}

unsigned short i_path_correcto(vista_a path, unsigned short puede_ser_vacio, unsigned short mostrar_mensaje,
                               unsigned short* es_unc) {
    return i_path_correcto_UNICODE(utf16_temporal(path).ver(), puede_ser_vacio, mostrar_mensaje, es_unc,
                                   nullptr);
}

unsigned short i_path_correcto_con_comodines_UNICODE(vista_w path, unsigned short* es_unc) {
    const trozos_de_ruta<wchar_t> trozos = crt_splitpath(path);
    const bool nombre_comodin = trozos.nombre == L"*";
    if (trozos.extension == L".*") {
        path.remove_suffix(trozos.extension.size() + (nombre_comodin ? trozos.nombre.size() : 0));
    } else if (nombre_comodin) {
        const cadena_w probado =
            concatena<wchar_t>({trozos.unidad, trozos.directorio, L"comprobar", trozos.extension});
        return i_path_correcto_UNICODE(probado, FALSO, FALSO, es_unc, nullptr);
    }
    return i_path_correcto_UNICODE(path, FALSO, FALSO, es_unc, nullptr);
}

unsigned short i_path_correcto_con_comodines(vista_a path, unsigned short* es_unc) {
    return i_path_correcto_con_comodines_UNICODE(utf16_temporal(path).ver(), es_unc);
}

}  // namespace lumodir

using namespace lumodir;

namespace {

// The name rule trims the text that it is given, the caller's own. A name with nothing to trim may be a constant
// and is not written to.
bool i_recorta_y_comprueba(wchar_t* nombre) noexcept {
    const vista_w entero = a_vista(nombre);
    const vista_w recortado = recorta_derecha(entero);
    if (recortado.size() < entero.size()) {
        nombre[recortado.size()] = L'\0';
    }
    return i_nombre_base_correcto_UNICODE(recortado);
}

}  // namespace

unsigned short cdir_path_valido_UNICODE(const wchar_t* path, unsigned short mostrar_mensaje) {
    if (path != nullptr && i_es_path_corriente<true>(path, nullptr)) {
        return CIERTO;
    }
    return i_path_correcto_UNICODE(recorta_derecha(a_vista(path)), FALSO, mostrar_mensaje, nullptr, nullptr);
}

unsigned short cdir_path_valido(const char* path, unsigned short mostrar_mensaje) {
    return puente<cdir_path_valido_UNICODE>(path, mostrar_mensaje);
}

unsigned short cdir_es_path_valido_UNICODE(const wchar_t* path, wchar_t** mensaje) {
    return i_path_correcto_UNICODE(recorta_derecha(a_vista(path)), FALSO, FALSO, nullptr, mensaje);
}

unsigned short cdir_nombre_base_valido_UNICODE(wchar_t* nombre) {
    if (!i_comprueba(nombre != nullptr, "nombre != NULL")) {
        return FALSO;
    }
    return i_es_punto_o_dos_puntos(a_vista(nombre)) || i_recorta_y_comprueba(nombre) ? CIERTO : FALSO;
}

unsigned short cdir_nombre_base_valido(const char* nombre) {
    const utf16_temporal nombre_u(nombre);
    return i_comprueba(nombre != nullptr, "nombre != NULL") &&
                   i_nombre_base_valido_UNICODE(a_vista(nombre_u.c_str()))
               ? CIERTO
               : FALSO;
}

unsigned short cdir_nombre_fichero_valido(wchar_t* nombre) {
    if (!i_comprueba(nombre != nullptr, "nombre != NULL")) {
        return FALSO;
    }
    return !acaba_en(a_vista(nombre), L".") && i_recorta_y_comprueba(nombre) ? CIERTO : FALSO;
}
