// See crea_directorios.hpp.
#include "files/crea_directorios.hpp"

#include "cdir.h"
#include "companions/buclrein.hpp"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "frame/avisos.hpp"
#include "frame/catalogo.hpp"
#include "frame/puente.hpp"
#include "lumodir.h"
#include "paths/split_makepath.hpp"

namespace lumodir {
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

// The path without its drive: where the splitter took it from elsewhere than the beginning, its first occurrence.
cadena_w i_sin_unidad(vista_w path, vista_w unidad) {
    const std::size_t donde = path.find(unidad);
    return donde == vista_w::npos
               ? cadena_w(path)
               : concatena<wchar_t>({path.substr(0, donde), path.substr(donde + unidad.size())});
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
    cadena_w resultado = cadena_w::con_sitio(ruta.size());
    std::size_t largo = 0;
    const bool relativa = !es_separador(ruta.front());
    for (const vista_w componente : pila) {
        if (largo > 0 || !relativa) {
            resultado.datos()[largo++] = L'\\';
        }
        rasgos_utf16::copy(resultado.datos() + largo, componente.data(), componente.size());
        largo += componente.size();
    }
    resultado.acorta(largo);
    return resultado;
}

// The path that is to exist, written once; each level of it is the same text cut short.
class escalera {
public:
    escalera(vista_w unidad, vista_w directorio)
        : ruta_(cadena_w::con_sitio(unidad.size() + directorio.size() + 1)) {
        std::size_t largo = i_escribe(0, unidad);
        const bool relativa = !directorio.empty() && !es_separador(directorio.front());
        i_por_cada_componente(directorio, [&](vista_w componente) {
            if (!relativa || !finales_.empty()) {
                largo = i_escribe(largo, L"\\");
            }
            largo = i_escribe(largo, componente);
            finales_.anade(largo);
            anidada_ = anidada_ && componente.back() != L'.' && componente.back() != L' ';
        });
    }

    std::size_t niveles() const noexcept { return finales_.size(); }
    // Whether each level lies in the one before it. Not with "..", nor with names whose end Windows cuts off.
    bool anidada() const noexcept { return anidada_; }

    // The path down to a level; valid until the next call.
    const wchar_t* hasta(std::size_t nivel) noexcept {
        if (cortada_ != 0) {
            ruta_.datos()[cortada_] = L'\\';
        }
        cortada_ = finales_[nivel];
        ruta_.datos()[cortada_] = L'\0';
        return ruta_.c_str();
    }
    bool existe(std::size_t nivel) noexcept {
        return lmlongpath_waccess(hasta(nivel), acceso_existencia) == CIERTO;
    }

private:
    std::size_t i_escribe(std::size_t donde, vista_w texto) noexcept {
        rasgos_utf16::copy(ruta_.datos() + donde, texto.data(), texto.size());
        return donde + texto.size();
    }

    cadena_w ruta_;
    vector_interno<std::size_t> finales_;
    bool anidada_ = true;
    std::size_t cortada_ = 0;
};

// How many levels are there already. Where one lies in the other, halving finds the last without asking for each.
std::size_t i_niveles_existentes(escalera& camino) noexcept {
    std::size_t falta = camino.niveles() - 1;
    if (camino.existe(falta)) {
        return falta + 1;
    }
    std::size_t existentes = 0;
    while (existentes < falta) {
        const std::size_t medio = existentes + (falta - existentes) / 2;
        if (camino.existe(medio)) {
            existentes = medio + 1;
        } else {
            falta = medio;
        }
    }
    return existentes;
}

// `se_sabe_que_falta`: the first attempt need not ask.
unsigned short i_crea_nivel(const wchar_t* ruta, bool se_sabe_que_falta, unsigned short informa) {
    DWORD codigo = 0;
    const auto intento = [&]() -> unsigned short {
        if (!se_sabe_que_falta && lmlongpath_waccess(ruta, acceso_existencia) == CIERTO) {
            return CIERTO;
        }
        se_sabe_que_falta = false;
        // Somebody else was quicker: the level is there, which is what is wanted.
        return lmlongpath_CreateDirectoryW(ruta, nullptr, &codigo) || codigo == ERROR_ALREADY_EXISTS ? CIERTO
                                                                                                     : FALSO;
    };
    const auto al_fallar = [&](BuclRein* bucle) {
        buclrein_set_mensaje_reintentar(bucle, i_mensaje(i_msg_53948_no_se_puede_crear_directorio, {ruta}),
                                        codigo);
    };
    return i_con_reintentos(CIERTO, informa, intento, al_fallar);
}

unsigned short i_sube(escalera& camino, unsigned short informa) {
    if (camino.niveles() == 0) {
        return CIERTO;
    }
    for (std::size_t i = camino.anidada() ? i_niveles_existentes(camino) : 0; i < camino.niveles(); ++i) {
        const wchar_t* ruta = camino.hasta(i);
        if (i_crea_nivel(ruta, camino.anidada(), informa) != CIERTO) {
            if (informa == CIERTO) {
                i_muestra_mensaje(i_msg_53952_nombre_directorio_incorrecto, a_vista(ruta));
            }
            return FALSO;
        }
    }
    return CIERTO;
}

}  // namespace

unsigned short i_crea_directorios(const wchar_t* path, unsigned short es_directorio,
                                  unsigned short informa) noexcept {
    if (!i_comprueba(path != nullptr, "(path) != NULL")) {
        return FALSO;
    }
    const path_comprobado<wchar_t> comprobado = i_comprueba_fichero(a_vista(path));
    const division<wchar_t> piezas(comprobado.path, comprobado.es_unc);
    cadena_w resto = i_sin_unidad(a_vista(path), piezas.unidad);
    if (resto.ver().find(L"\\..\\") != vista_w::npos) {
        resto = i_sin_retrocesos(resto.ver());
    }
    if (es_directorio == CIERTO && !acaba_en_separador(resto.ver())) {
        resto = concatena<wchar_t>({resto.ver(), L"\\"});
    }
    escalera camino(piezas.unidad, crt_splitpath(resto.ver()).directorio);
    return i_sube(camino, informa);
}

}  // namespace lumodir

using namespace lumodir;

unsigned short cdir_crea_directorios_UNICODE(const wchar_t* path, unsigned short es_directorio) {
    return i_crea_directorios(path, es_directorio, CIERTO);
}

void cdir_crea_directorios(const char* path, unsigned short es_directorio) {
    puente_sin_resultado<cdir_crea_directorios_UNICODE>(path, es_directorio);
}

unsigned short cdir_crea_directorios_del_path_UNICODE(const wchar_t* path) {
    return i_crea_directorios(path, CIERTO, CIERTO);
}

void cdir_crea_directorios_del_path(const char* path) {
    puente_sin_resultado<cdir_crea_directorios_del_path_UNICODE>(path);
}

unsigned short cdir_crea_directorios_fichero_UNICODE(const wchar_t* path) {
    return i_crea_directorios(path, FALSO, CIERTO);
}

void cdir_crea_directorios_fichero(const char* path) {
    puente_sin_resultado<cdir_crea_directorios_fichero_UNICODE>(path);
}

unsigned short cdir_crea_directorios_si_es_posible_UNICODE(const wchar_t* path) {
    return i_crea_directorios(path, CIERTO, FALSO);
}

unsigned short cdir_crea_directorios_fichero_si_es_posible_UNICODE(const wchar_t* path) {
    return i_crea_directorios(path, FALSO, FALSO);
}

unsigned short cdir_crea_directorios_fichero_si_es_posible(const char* path) {
    return puente<cdir_crea_directorios_fichero_si_es_posible_UNICODE>(path);
}
