// See fichsdir.hpp.
#include "listings/fichsdir.hpp"

#include "companions/acadorde.hpp"
#include "companions/ordena.hpp"
#include "listings/filtro.hpp"
#include "paths/nomsfich.hpp"
#include "paths/split_makepath.hpp"

namespace interno {

namespace {

// The two parts of an 8-bit name as a file-name record has them, case aside: no blanks after the extension.
nombre_partido<char> i_partes(vista_a nombre) noexcept {
    nombre_partido<char> partes = i_parte_nombre(nombre);
    partes.extension = recorta_derecha(partes.extension);
    return partes;
}

// Compared as extensions of records are, which reports one that no record may have.
bool i_es_la_extension(const nombre_partido<char>& partes, vista_a extension) {
    return i_misma_extension(minusculas_temporales(partes.extension).ver(), extension);
}

// Hands each file that has the extension, by its 8-bit name, to `toma(name, parts)`.
template <class Toma>
void i_recorre_con_extension(const wchar_t* directorio, const char* extension, Toma toma) {
    i_recorre_directorio(directorio, {}, [&](const WIN32_FIND_DATAW& e) {
        if (i_es_directorio(e)) {
            return;
        }
        cadena_a nombre = utunicode_UNICODE_a_ANSI(i_nombre_de_entrada(e));
        const nombre_partido<char> partes = i_partes(nombre);
        if (i_es_la_extension(partes, a_vista(extension))) {
            toma(nombre, partes);
        }
    });
}

// Sorts, and keeps one of each.
void i_ordena_sin_repetidos(AcadOrde& conjunto) {
    vector_interno<char*>& textos = conjunto.textos.textos;
    ordena_estable(textos.data(), textos.size(), widestr_fun_compara);
    std::size_t num = 0;
    for (std::size_t i = 0; i < textos.size(); ++i) {
        if (num > 0 && vista_a(textos[num - 1]) == vista_a(textos[i])) {
            i_libera(textos[i]);
        } else {
            textos[num++] = textos[i];
        }
    }
    textos.acorta(num);
}

// The extension of a UTF-16 name, without its dot.
vista_w i_extension_ancha(vista_w nombre) {
    const vista_w extension = division<wchar_t>(recorta_derecha(nombre), false).extension;
    return extension.substr(extension.empty() ? 0 : 1);
}

}  // namespace

objeto<ArrCADENA> i_directorios_sin_extension(const wchar_t* directorio) {
    auto lista = i_directorios<char>(directorio, i_es_directorio_sin_punto, {});
    std::size_t num = 0;
    for (std::size_t i = 0; i < lista->num(); ++i) {
        std::swap(lista->textos[num], lista->textos[i]);
        num += i_es_la_extension(i_partes(lista->ver(num)), "") ? 1 : 0;
    }
    lista->reduce(num);
    return lista;
}

objeto<ArrCADENA_u> i_nombres_con_extension(const wchar_t* directorio, vista_w extension) noexcept {
    return i_nombres<wchar_t>(directorio, {}, [extension](const WIN32_FIND_DATAW& e) {
        return i_es_fichero(e) && iguales_sin_caja(i_extension_ancha(i_nombre_de_entrada(e)), extension);
    });
}

objeto<ArrCADENA> i_nombres_con_extension(const wchar_t* directorio, const char* extension) noexcept {
    auto lista = objeto<ArrCADENA>::crea();
    i_recorre_con_extension(directorio, extension, [&](cadena_a& nombre, const nombre_partido<char>&) {
        lista->anade(std::move(nombre));
    });
    return lista;
}

// Base names as a record has them, in lower case, and then in the case that is asked for.
objeto<AcadOrde> i_nombres_base(const wchar_t* directorio, const char* extension,
                                bool en_mayusculas) noexcept {
    auto conjunto = objeto<AcadOrde>::crea();
    i_recorre_con_extension(directorio, extension, [&](const cadena_a&, const nombre_partido<char>& partes) {
        cadena_a base(partes.base);
        plataforma::minusculas_ansi(base.datos(), base.size());
        if (en_mayusculas) {
            plataforma::mayusculas_ansi(base.datos(), base.size());
        }
        conjunto->textos.anade(std::move(base));
    });
    i_ordena_sin_repetidos(*conjunto);
    return conjunto;
}

}  // namespace interno
