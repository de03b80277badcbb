// See crea_directorios.hpp.
#include "files/crea_directorios.hpp"

#include <utility>

#include "companions/buclrein.hpp"
#include "companions/lmlongpath.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "paths/path_correcto.hpp"
#include "paths/split_makepath.hpp"

namespace interno {
namespace {

constexpr vista_w separadores = L"\\/";

// Calls `hace` with each component that is not empty.
template <class Hace>
void i_por_cada_componente(vista_w ruta, Hace hace) {
    for (std::size_t i = 0; i < ruta.size();) {
        const std::size_t principio = ruta.find_first_not_of(separadores, i);
        if (principio == vista_w::npos) {
            return;
        }
        const std::size_t fin = ruta.find_first_of(separadores, principio);
        i = fin == vista_w::npos ? ruta.size() : fin;
        hace(ruta.substr(principio, i - principio));
    }
}

// The full form of a directory, without a prefix: the names of the levels go behind it. A NULL string when the system
// cannot tell.
cadena_w i_directorio_fijado(const wchar_t* de_donde) {
    const ruta_fijada fijada(de_donde);
    cadena_w forma = fijada.c_str() == de_donde ? cadena_w() : lmlongpath_desprepend_path(fijada.c_str());
    if (acaba_en_separador(forma.ver())) {
        forma.acorta(forma.size() - 1);
    }
    return forma;
}

// What the system is given for the root of a path, which `resto` follows: full, without a final separator. A NULL string
// when the system cannot tell.
cadena_w i_raiz_fijada(vista_w raiz, vista_w resto) {
    const bool desde_raiz = !resto.empty() && es_separador(resto.front());
    if (raiz.empty()) {
        return i_directorio_fijado(desde_raiz ? L"\\" : L".");
    }
    if (raiz[1] == L':') {  // a drive: with a name right behind it, its current directory
        return desde_raiz ? cadena_w(raiz) : i_directorio_fijado(concatena<wchar_t>({raiz, L"."}).c_str());
    }
    if (i_lleva_prefijo(raiz)) {
        return cadena_w(raiz);
    }
    return concatena<wchar_t>(
        {L"\\\\", extrae_token(raiz, 1, separadores), L"\\", extrae_token(raiz, 2, separadores)});
}

// Takes each ".." away together with the component before it, whatever that is; one in first place stays. A final
// separator is lost, a relative path stays relative.
cadena_w i_sin_retrocesos(vista_w ruta) {
    vector_interno<vista_w> pila;
    i_por_cada_componente(ruta, [&](vista_w componente) {
        if (componente == L".." && !pila.empty()) {
            pila.quita_ultimo();
        } else {
            pila.anade(componente);
        }
    });
    const bool relativa = pila.empty() || !es_separador(ruta.front());
    return i_ruta_bajo(relativa ? vista_w() : vista_w(L"\\"), pila.size(),
                       [&](std::size_t i) { return pila[i]; });
}

// A level of a path: as messages show it, and as the system is given it.
struct nivel {
    const wchar_t* mostrado;
    const wchar_t* fijado;
    bool es_el_ultimo;
};

// The path that is to exist, written once; each level of it is the same text cut short. A path that has no levels
// below its root has that for its only one: the empty one is never asked for.
class escalera {
public:
    escalera(vista_w raiz, vista_w fijada, vista_w directorio)
        : mostrada_(cadena_w::con_sitio(raiz.size() + directorio.size() + 1)),
          fijada_(cadena_w::con_sitio(fijada.size() + directorio.size() + 1)) {
        const bool relativa = directorio.empty() || !es_separador(directorio.front());
        std::size_t mostrado = i_escribe(mostrada_, 0, raiz);
        std::size_t fijado = i_escribe(fijada_, 0, fijada);
        i_por_cada_componente(directorio, [&](vista_w componente) {
            const bool sin_barra = relativa && finales_.empty();
            mostrado = i_escribe(mostrada_, mostrado, sin_barra ? vista_w() : vista_w(L"\\"));
            fijado = i_escribe(fijada_, fijado, fijado == 0 && sin_barra ? vista_w() : vista_w(L"\\"));
            mostrado = i_escribe(mostrada_, mostrado, componente);
            fijado = i_escribe(fijada_, fijado, componente);
            finales_.anade({mostrado, fijado});
            anidada_ = anidada_ && componente.back() != L'.' && componente.back() != L' ';
        });
        if (finales_.empty()) {
            mostrado = i_escribe(mostrada_, mostrado, raiz.empty() ? vista_w(L"\\") : vista_w());
            finales_.anade({mostrado, i_escribe(fijada_, fijado, L"\\")});
        }
    }

    std::size_t niveles() const noexcept { return finales_.size(); }
    // Whether each level lies in the one before it. Not with "..", nor with names whose end Windows cuts off.
    bool anidada() const noexcept { return anidada_; }

    // Valid until the next call.
    nivel hasta(std::size_t numero) noexcept {
        if (cortada_ < finales_.size()) {
            mostrada_.datos()[finales_[cortada_].mostrado] = L'\\';
            fijada_.datos()[finales_[cortada_].fijado] = L'\\';
        }
        cortada_ = numero;
        mostrada_.datos()[finales_[numero].mostrado] = L'\0';
        fijada_.datos()[finales_[numero].fijado] = L'\0';
        return {mostrada_.c_str(), fijada_.c_str(), numero + 1 == finales_.size()};
    }

private:
    struct final_de_nivel {
        std::size_t mostrado;
        std::size_t fijado;
    };
    static std::size_t i_escribe(cadena_w& texto, std::size_t posicion, vista_w trozo) noexcept {
        rasgos_utf16::copy(texto.datos() + posicion, trozo.data(), trozo.size());
        return posicion + trozo.size();
    }

    cadena_w mostrada_;
    cadena_w fijada_;
    vector_interno<final_de_nivel> finales_;
    bool anidada_ = true;
    std::size_t cortada_ = static_cast<std::size_t>(-1);
};

// Of the path that was named only a directory will do.
bool i_vale(const existencia& que_hay, bool es_el_ultimo) noexcept {
    return es_el_ultimo ? que_hay.es_directorio() : que_hay.hay();
}

bool i_existe(const nivel& escalon) noexcept {
    return i_vale(i_existencia(escalon.fijado), escalon.es_el_ultimo);
}

// How many levels are there already. Where one lies in the other, halving finds the last without asking for each.
std::size_t i_niveles_existentes(escalera& camino) noexcept {
    std::size_t falta = camino.niveles() - 1;
    if (i_existe(camino.hasta(falta))) {
        return falta + 1;
    }
    std::size_t existentes = 0;
    while (existentes < falta) {
        const std::size_t medio = existentes + (falta - existentes) / 2;
        if (i_existe(camino.hasta(medio))) {
            existentes = medio + 1;
        } else {
            falta = medio;
        }
    }
    return existentes;
}

// Whatever the code of the failure, the level may be there: made by somebody who was quicker, or a root or a share
// that refuses the creation of what it has. And a system may say that it made what no directory will be (the name of
// a device).
desenlace i_crea_o_existe(const ruta_fijada& ruta, bool es_el_ultimo) noexcept {
    const desenlace creado = lmlongpath_CreateDirectoryW(ruta);
    if (creado.hecho && !es_el_ultimo) {
        return creado;
    }
    const existencia que_hay = i_existencia(ruta);
    if (i_vale(que_hay, es_el_ultimo)) {
        return {true, ERROR_SUCCESS};
    }
    if (!creado.hecho) {
        return {!es_el_ultimo && creado.codigo == ERROR_ALREADY_EXISTS, creado.codigo};
    }
    return {que_hay.cual == existencia::estado::no_se_sabe,
            que_hay.hay() ? DWORD{ERROR_DIRECTORY} : que_hay.codigo};
}

// `se_sabe_que_falta`: the first attempt need not ask.
bool i_crea_nivel(const nivel& escalon, bool se_sabe_que_falta, bool informa) {
    const ruta_fijada ruta(escalon.fijado);
    return i_insiste(
        informa,
        [&] {
            const bool pregunta = !std::exchange(se_sabe_que_falta, false);
            return pregunta && i_vale(i_existencia(ruta), escalon.es_el_ultimo)
                       ? desenlace{true, ERROR_SUCCESS}
                       : i_crea_o_existe(ruta, escalon.es_el_ultimo);
        },
        [&] { return i_mensaje(i_msg_53948_no_se_puede_crear_directorio, {escalon.mostrado}); });
}

bool i_sube(escalera& camino, bool informa) {
    for (std::size_t i = camino.anidada() ? i_niveles_existentes(camino) : 0; i < camino.niveles(); ++i) {
        const nivel escalon = camino.hasta(i);
        if (!i_crea_nivel(escalon, camino.anidada(), informa)) {
            if (informa) {
                i_muestra_mensaje(i_msg_53952_nombre_directorio_incorrecto, a_vista(escalon.mostrado));
            }
            return false;
        }
    }
    return true;
}

// An incorrect path is shown and tried all the same. A prefix of the system's is not what is judged.
void i_avisa_si_es_incorrecto(vista_w path) {
    if (!i_lleva_prefijo(path)) {
        i_comprueba_fichero(path);
        return;
    }
    const cadena_w sin_prefijo = lmlongpath_desprepend_path(recorta_derecha(path));
    if (!i_path_correcto_UNICODE(i_sin_prefijo(sin_prefijo)).correcto) {
        i_muestra_mensaje(i_msg_53955_fichero_no_correcto, recorta_derecha(path));
    }
}

}  // namespace

bool i_crea_directorios(const wchar_t* path, bool es_directorio, bool informa) noexcept {
    const vista_w completo(path);
    i_avisa_si_es_incorrecto(completo);
    const vista_w raiz = completo.substr(0, i_largo_de_raiz(completo));
    const vista_w tras_raiz = completo.substr(raiz.size());
    cadena_w resto(tras_raiz);
    if (resto.ver().find(L"\\..\\") != vista_w::npos) {
        resto = i_sin_retrocesos(resto.ver());
    }
    if (es_directorio && !acaba_en_separador(resto.ver())) {
        resto = concatena<wchar_t>({resto.ver(), L"\\"});
    }
    // Nothing of it is a drive, whatever it looks like: the root is cut off already.
    const vista_w directorio = resto.ver().substr(0, resto.ver().find_last_of(separadores) + 1);
    if (raiz.empty() && (tras_raiz.empty() || directorio.empty())) {
        return true;  // the current directory, which needs no creation
    }
    const cadena_w fijada = i_raiz_fijada(raiz, tras_raiz);
    if (fijada.es_nula()) {
        // Nobody knows where its levels would lie: a drive's might come into the directory of another.
        if (informa) {
            i_muestra_mensaje(i_msg_53952_nombre_directorio_incorrecto, completo);
        }
        return false;
    }
    escalera camino(raiz, fijada.ver(), directorio);
    return i_sube(camino, informa);
}

}  // namespace interno
