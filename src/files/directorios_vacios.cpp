// See directorios_vacios.hpp.
#include "files/directorios_vacios.hpp"

#include <algorithm>
#include <utility>

#include "companions/directorio_abierto.hpp"
#include "companions/error_interno.hpp"
#include "companions/lmlongpath.hpp"
#include "files/borrado.hpp"
#include "listings/recorrido.hpp"
#include "paths/componentes.hpp"
#include "paths/rutas.hpp"
#include "paths/split_makepath.hpp"

namespace interno {
namespace {

constexpr const char* mas_corto = "widestr_longitud(dir) > widestr_longitud(path_base)";

// How many directories of a path lie below its first `largo_base` units, counted from its end up to the first
// component that names another directory. One with a "/" behind it is the last: going up from there changes nothing.
std::size_t i_niveles_bajo_la_base(vista_w directorio, std::size_t largo_base) noexcept {
    std::size_t niveles = 0;
    for (;;) {
        const vista_w resto = i_sin_separadores_finales(directorio);
        if (resto.size() <= largo_base) {
            return niveles;
        }
        const vista_w componente = resto.substr(resto.find_last_of(L"\\/:") + 1);
        if (componente != L".") {  // the directory itself
            // What the system resolves, or cuts to nothing ("..", "...", " "), is another directory, perhaps the base.
            if (sin_final_recortable(componente).empty()) {
                return niveles;
            }
            ++niveles;
            if (directorio.find(L'/', resto.size()) != vista_w::npos) {
                return niveles;
            }
        }
        directorio = resto.substr(0, resto.size() - componente.size());
    }
}

// A directory that is open, and the entry by which the one above it holds it.
struct eslabon {
    entradas_guardadas entrada;  // none of the base
    directorio_abierto directorio;
};

// The directories from the base down to the one that is to go, each open through the one above it, as far as they are
// there: what is missing below counts as removed.
class cadena_de_directorios {
public:
    cadena_de_directorios() = default;
    cadena_de_directorios(const cadena_de_directorios&) = delete;
    cadena_de_directorios& operator=(const cadena_de_directorios&) = delete;
    ~cadena_de_directorios() {
        while (!eslabones_.empty()) {
            i_suelta_ultimo();
        }
    }

    // Answers whether everything that is there could be opened; links cannot.
    bool abre(const ruta_fijada& base, vista_w nombres) {
        auto primero = objeto<eslabon>::crea();
        const DWORD codigo = primero->directorio.abre(base, trato_);
        eslabones_.anade(primero.suelta());
        if (codigo != ERROR_SUCCESS) {
            return i_dice_que_se_ha_ido(codigo);
        }
        while (!nombres.empty()) {
            const std::size_t fin = nombres.find(L'\\');
            const vista_w nombre = nombres.substr(0, fin);
            nombres = fin == vista_w::npos ? vista_w() : nombres.substr(fin + 1);
            auto siguiente = objeto<eslabon>::crea();
            if (!i_busca(nombre, siguiente->entrada)) {
                if (sistema.sigue_enlaces()) {
                    return true;  // missing, and all below it
                }
                // Perhaps a short name, which no listing shows.
                siguiente->entrada.guarda({nombre, FILE_ATTRIBUTE_DIRECTORY, 0, 0, {}});
            }
            const DWORD codigo_de_nivel =
                siguiente->directorio.abre(eslabones_.back()->directorio, siguiente->entrada[0]);
            if (i_dice_que_se_ha_ido(codigo_de_nivel)) {
                return true;
            }
            if (codigo_de_nivel != ERROR_SUCCESS) {
                return false;
            }
            siguiente->entrada.pon_numero_abierto(0, siguiente->directorio.numero());
            eslabones_.anade(siguiente.suelta());
        }
        return true;
    }

    bool queda_alguno() const noexcept { return eslabones_.size() > 1; }

    // Removes the last one if it is empty, and closes it.
    bool quita_ultimo() {
        if (!i_esta_vacio(eslabones_.back()->directorio)) {
            return false;
        }
        eslabones_.back()->directorio.cierra();
        objetivo_en_directorio ultimo(eslabones_[eslabones_.size() - 2]->directorio,
                                      eslabones_.back()->entrada[0]);
        const bool quitado = i_quita_directorio(ultimo).hecho;
        i_suelta_ultimo();
        return quitado;
    }

private:
    // The entry of that very name or, where there is none, of the name in another letter case.
    bool i_busca(vista_w nombre, entradas_guardadas& encontrada) {
        lector_de_directorio entradas(eslabones_.back()->directorio);
        while (const entrada_leida* entrada = entradas.siguiente()) {
            const bool es_esa = entrada->nombre == nombre;
            if (es_esa || (encontrada.num() == 0 && i_mismo_nombre(entrada->nombre, nombre))) {
                encontrada.vacia();
                encontrada.guarda(*entrada);
                if (es_esa) {
                    return true;
                }
            }
        }
        return encontrada.num() != 0;
    }
    static bool i_esta_vacio(directorio_abierto& directorio) {
        lector_de_directorio entradas(directorio);
        while (const entrada_leida* entrada = entradas.siguiente()) {
            if (!entrada->es_directorio() || !empieza_por(entrada->nombre, L".")) {
                return false;
            }
        }
        return entradas.codigo() == ERROR_NO_MORE_FILES;
    }
    void i_suelta_ultimo() noexcept {
        const objeto<eslabon> ultimo(eslabones_.back());
        eslabones_.quita_ultimo();
    }

    trato_con_volumen trato_;
    vector_interno<eslabon*> eslabones_;
};

// Without a base the climb ends at the drive.
cadena_w i_unidad_como_base(vista_w directorio) {
    return i_makepath(division<wchar_t>(i_comprueba_fichero(directorio)).unidad, {}, {}, {});
}

// Whether a base without separators at its end, the beginning of a path, ends within a name of it: what bears that name
// is no base.
bool i_acaba_dentro_de_un_nombre(vista_w base, vista_w path) noexcept {
    return !base.empty() && !acaba_en(base, L":") && !es_separador(path[base.size()]);
}

// How many directories of a full path lie below another full path, with the one within whose name that ends; none
// when it does not lead there.
std::size_t i_niveles_entre(vista_w completa, vista_w base) noexcept {
    if (!i_mismo_nombre(completa.substr(0, base.size()), base)) {
        return 0;
    }
    std::size_t niveles = 0;
    bool en_nombre = false;
    for (const wchar_t c : completa.substr(base.size())) {
        niveles += c != L'\\' && !en_nombre ? 1 : 0;
        en_nombre = c != L'\\';
    }
    return niveles;
}

// What a directory and its base are relative to, asked for once: both mean the same place, whoever changes the current
// directory meanwhile.
class ancla {
public:
    explicit ancla(vista_w directorio) : cortado_(i_largo_de_raiz(directorio)) {
        constexpr std::size_t unidad = 2;
        const bool de_raiz = directorio.find_first_of(L"\\/") == cortado_;
        if (cortado_ != 0 && (cortado_ != unidad || de_raiz)) {
            return;  // it depends on nothing
        }
        const cadena_w texto =
            de_raiz ? cadena_w(L"\\") : concatena<wchar_t>({directorio.substr(0, cortado_), L"."});
        directorio_ = lmlongpath_forma_completa(texto.c_str());
    }

    // The full form of the directory, or of what it begins with; a NULL string when the system cannot tell.
    cadena_w completa(vista_w texto) const {
        const vista_w resto = texto.substr(std::min(cortado_, texto.size()));
        const cadena_w entero =
            directorio_.es_nula()
                ? concatena<wchar_t>({texto, acaba_en(texto, L":") ? L"\\" : L""})
                : concatena<wchar_t>({i_sin_separadores_finales(directorio_), L"\\", resto});
        // The prefix that a long path gets is none of the names that two paths share.
        cadena_w forma = lmlongpath_forma_completa_si_se_sabe(entero.c_str());
        return forma.es_nula() || i_lleva_prefijo(entero.ver()) ? std::move(forma)
                                                                : lmlongpath_desprepend_path(forma);
    }

private:
    std::size_t cortado_;
    cadena_w directorio_;
};

// Cuts the last directories off a full path that bears no separator at its end.
vista_w i_sin_ultimos(vista_w completa, std::size_t niveles) noexcept {
    for (std::size_t i = 0; i < niveles; ++i) {
        completa = i_sin_separadores_finales(completa.substr(0, completa.find_last_of(L"\\/")));
    }
    return completa;
}

void i_borra_mientras_esten_vacios(const wchar_t* directorio, vista_w base_dada) {
    const ancla donde_empieza(a_vista(directorio));
    const cadena_w forma = donde_empieza.completa(a_vista(directorio));
    const cadena_w forma_de_base = donde_empieza.completa(base_dada);
    // Where a path is not resolved, one that leads back out of a directory may be the base. What has no form itself has
    // no levels.
    if (forma_de_base.es_nula()) {
        return;
    }
    const vista_w completa = i_sin_separadores_finales(forma);
    // The text may go up and come back through the base; the system's form says where it does not.
    const std::size_t segun_el_texto = i_niveles_bajo_la_base(a_vista(directorio), base_dada.size());
    const std::size_t niveles = std::min(segun_el_texto, i_niveles_entre(completa, forma_de_base));
    if (niveles == 0) {
        return;
    }
    const vista_w base = i_sin_ultimos(completa, niveles);
    // A drive without its separator would be its current directory.
    const cadena_w ruta_de_base = concatena<wchar_t>({base, acaba_en(base, L":") ? L"\\" : L""});
    const ruta_fijada fijada(ruta_de_base.c_str());
    cadena_de_directorios cadena_abierta;
    if (!cadena_abierta.abre(fijada, i_sin_separador_inicial(completa.substr(base.size())))) {
        return;
    }
    while (cadena_abierta.queda_alguno()) {
        if (!cadena_abierta.quita_ultimo()) {
            return;
        }
    }
    i_comprueba(niveles != segun_el_texto || !i_acaba_dentro_de_un_nombre(base_dada, a_vista(directorio)),
                mas_corto);
}

}  // namespace

void i_borra_directorios_vacios(const wchar_t* path_directorio, vista_w path_base_no_borrar) {
    const bool hay_base = path_base_no_borrar.data() != nullptr;
    const cadena_w unidad = hay_base ? cadena_w() : i_unidad_como_base(a_vista(path_directorio));
    const vista_w directorio = i_sin_separadores_finales(a_vista(path_directorio));
    const vista_w base = i_sin_separadores_finales(hay_base ? path_base_no_borrar : unidad.ver());
    const bool es_principio =
        !hay_base ||
        i_comprueba(hay_texto(base) && empieza_por_sin_caja(directorio, base),
                    "widestr_es_subcadena_inicial_may_o_min(path_directorio, path_base_no_borrar) == CIERTO");
    if (iguales_sin_caja(directorio, base) || !i_comprueba(directorio.size() > base.size(), mas_corto) ||
        !es_principio) {
        return;
    }
    i_borra_mientras_esten_vacios(path_directorio, base);
}

}  // namespace interno
