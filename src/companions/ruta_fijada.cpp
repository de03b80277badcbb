// See ruta_fijada.hpp.
#include "companions/ruta_fijada.hpp"

#include <algorithm>

#include "companions/respuesta_entera.hpp"

namespace interno {
namespace {

// From this length on Windows refuses directories (MAX_PATH less room for a short name).
constexpr std::size_t primera_longitud_larga = 248;

constexpr vista_w separadores = L"\\/";
constexpr vista_w prefijo_largo = L"\\\\?\\";
constexpr vista_w prefijo_dispositivo = L"\\\\.\\";
constexpr vista_w prefijo_unc = L"\\\\?\\UNC\\";

bool i_es_compartida(vista_w ruta) noexcept {
    return ruta.size() >= 2 && es_separador(ruta[0]) && es_separador(ruta[1]);
}

// An absolute path never grows when it is made full, so a short one needs no question.
bool i_es_absoluta(vista_w ruta) noexcept {
    const bool con_unidad =
        ruta.size() >= 3 && lmstdc_isalpha(ruta[0]) && ruta[1] == L':' && es_separador(ruta[2]);
    return con_unidad || i_es_compartida(ruta);
}

// A share with several separators before or behind its name, which not every system takes for that share; with one
// only. A NULL string for any other path.
cadena_w i_recurso_sin_repeticiones(vista_w ruta) {
    if (!i_es_compartida(ruta) || i_lleva_prefijo(ruta)) {
        return {};
    }
    const std::size_t fin_de_maquina = ruta.find_first_of(separadores, 2);
    const std::size_t recurso = ruta.find_first_not_of(separadores, fin_de_maquina);
    if (recurso == vista_w::npos || fin_de_maquina == 2) {
        return {};
    }
    const std::size_t fin = std::min(ruta.find_first_of(separadores, recurso), ruta.size());
    const std::size_t resto = std::min(ruta.find_first_not_of(separadores, fin), ruta.size());
    if (recurso == fin_de_maquina + 1 && resto <= fin + 1) {
        return {};
    }
    const std::size_t con_separador = std::min(fin + 1, resto);
    return concatena<wchar_t>({ruta.substr(0, fin_de_maquina), L"\\",
                               ruta.substr(recurso, con_separador - recurso), ruta.substr(resto)});
}

bool i_cabe_tal_cual(vista_w ruta) noexcept {
    return (ruta.size() < primera_longitud_larga && i_es_absoluta(ruta)) || i_lleva_prefijo(ruta);
}

cadena_w i_prefija(vista_w forma) noexcept {
    return empieza_por(forma, L"\\\\") ? concatena<wchar_t>({prefijo_unc, forma.substr(2)})
                                       : concatena<wchar_t>({prefijo_largo, forma});
}

// The third unit of `\\?\` or `\\.\`, whose separators may be either; 0 where a path begins otherwise.
wchar_t i_signo_de_prefijo(vista_w ruta) noexcept {
    return ruta.size() >= prefijo_largo.size() && es_separador(ruta[0]) && es_separador(ruta[1]) &&
                   (ruta[2] == L'?' || ruta[2] == L'.') && es_separador(ruta[3])
               ? ruta[2]
               : L'\0';
}

// The question for the full form of a path: relative parts resolved, "/" turned into "\".
auto i_pregunta_por_forma(const wchar_t* ruta) noexcept {
    return [ruta](wchar_t* destino, DWORD sitio) {
        return sistema.GetFullPathNameW(ruta, sitio, destino, nullptr);
    };
}

// Making a path full cuts the dots at its end. A search pattern must keep them: "*." asks for less than "*".
bool i_pierde_puntos_finales(vista_w nombre) noexcept {
    return acaba_en(nombre, L".") && !i_es_punto_o_dos(nombre);
}

// What follows the last separator of a path, or its drive.
vista_w i_ultimo_componente(vista_w ruta) noexcept {
    const std::size_t separador = ruta.find_last_of(separadores);
    if (separador != vista_w::npos) {
        return ruta.substr(separador + 1);
    }
    return ruta.substr(ruta.size() >= 2 && ruta[1] == L':' ? 2 : 0);
}

}  // namespace

bool i_lleva_prefijo(vista_w ruta) noexcept {
    return empieza_por(ruta, prefijo_largo) || empieza_por(ruta, prefijo_dispositivo);
}

bool i_mismo_nombre(vista_w a, vista_w b) noexcept {
    return ::CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                                  TRUE) == CSTR_EQUAL;
}

std::size_t i_largo_de_raiz(vista_w ruta) noexcept {
    const auto tras_un_nombre = [ruta](std::size_t desde) {
        const std::size_t principio = ruta.find_first_not_of(separadores, desde);
        return std::min(ruta.find_first_of(separadores, principio), ruta.size());
    };
    if (empieza_por_sin_caja(ruta, prefijo_unc)) {
        return tras_un_nombre(tras_un_nombre(prefijo_unc.size()));
    }
    if (i_lleva_prefijo(ruta)) {
        return tras_un_nombre(prefijo_largo.size());
    }
    if (i_es_compartida(ruta)) {
        return tras_un_nombre(tras_un_nombre(2));
    }
    return ruta.size() >= 2 && ruta[1] == L':' ? 2 : 0;
}

ruta_fijada::ruta_fijada(const wchar_t* dada, uso para) noexcept
    : dada_(dada), texto_(dada == nullptr ? L"" : dada) {
    const vista_w original = a_vista(dada);
    cadena_w recurso = i_recurso_sin_repeticiones(original);
    const vista_w texto = recurso.es_nula() ? original : recurso.ver();
    const wchar_t* de = recurso.es_nula() ? dada : recurso.c_str();
    if (texto.empty() || i_cabe_tal_cual(texto)) {
        texto_ = recurso.es_nula() ? texto_ : de;
        larga_ = std::move(recurso);
        return;
    }
    i_fija(de);
    const vista_w nombre = i_ultimo_componente(original);
    if (para == uso::busqueda && i_pierde_puntos_finales(nombre)) {
        i_devuelve_nombre(nombre);
    }
}

void ruta_fijada::i_fija(const wchar_t* de) {
    const DWORD largo = i_pregunta_por_forma(de)(corta_, sitio_corto);
    if (largo == 0) {
        return;  // the system cannot tell: it is given what the caller gave
    }
    vista_w forma(corta_, largo);
    if (largo >= sitio_corto) {
        larga_ = i_respuesta_de<wchar_t>(largo, i_pregunta_por_forma(de));
        if (larga_.es_nula()) {
            return;
        }
        forma = larga_.ver();
    }
    if (forma.size() >= primera_longitud_larga && !i_lleva_prefijo(forma)) {
        larga_ = i_prefija(forma);
    }
    texto_ = larga_.es_nula() ? corta_ : larga_.c_str();
}

void ruta_fijada::i_devuelve_nombre(vista_w nombre) {
    const vista_w forma = a_vista(texto_);
    larga_ = concatena<wchar_t>({forma.substr(0, forma.rfind(L'\\') + 1), nombre});
    texto_ = larga_.c_str();
}

const wchar_t* ruta_fijada::dada_si_cabe() const noexcept {
    const vista_w forma(texto_);
    return forma.size() >= primera_longitud_larga && i_lleva_prefijo(forma) ? texto_ : dada_;
}

cadena_w lmlongpath_forma_completa_si_se_sabe(const ruta_fijada& ruta) {
    // Asked for its full form, the system would cut the end of what it takes literally in every other call.
    if (empieza_por(vista_w(ruta.c_str()), prefijo_largo)) {
        return cadena_w(vista_w(ruta.c_str()));
    }
    return i_respuesta_entera<wchar_t>(i_pregunta_por_forma(ruta.c_str()));
}

cadena_w lmlongpath_forma_completa(const ruta_fijada& ruta) {
    cadena_w completa = lmlongpath_forma_completa_si_se_sabe(ruta);
    return completa.es_nula() ? cadena_w(vista_w(ruta.c_str())) : std::move(completa);
}

cadena_w lmlongpath_forma_literal(const wchar_t* ruta) {
    const vista_w dada = a_vista(ruta);
    if (i_lleva_prefijo(dada)) {
        return cadena_w(dada);
    }
    const cadena_w recurso = i_recurso_sin_repeticiones(dada);
    cadena_w completa =
        i_respuesta_entera<wchar_t>(i_pregunta_por_forma(recurso.es_nula() ? ruta : recurso.c_str()));
    return completa.es_nula() || i_lleva_prefijo(completa.ver()) ? std::move(completa)
                                                                 : i_prefija(completa.ver());
}

cadena_w lmlongpath_desprepend_path(vista_w ruta) {
    const wchar_t signo = i_signo_de_prefijo(ruta);
    if (signo == 0) {
        return cadena_w(ruta);
    }
    const vista_w resto = ruta.substr(prefijo_largo.size());
    if (empieza_por_sin_caja(resto, L"UNC") && resto.size() > 3 && es_separador(resto[3])) {
        return concatena<wchar_t>({L"\\\\", resto.substr(4)});
    }
    // Other names of the system (of volumes, of devices, a drive as one) have no ordinary form.
    const bool con_unidad = resto.size() >= 2 && lmstdc_isalpha(resto[0]) && resto[1] == L':' &&
                            (signo == L'?' || (resto.size() > 2 && es_separador(resto[2])));
    return cadena_w(con_unidad ? resto : ruta);
}

}  // namespace interno
