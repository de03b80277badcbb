// Joining paths, relative and absolute paths, the directories of PATH. Plain text work: nothing asks the file
// system, and no "." or ".." is resolved.
//
// Promises: a join is one allocation; a relative path is a part of the path given.
// Cannot promise: that a base ends at a component: the relative form tests a plain prefix, and stays so.
// Checked by tests/paths/rutas_test.cpp, also against naive models over every short string.
#pragma once

#include "companions/arr.hpp"
#include "companions/cadena.hpp"

namespace interno {

template <class C>
constexpr vista<C> i_sin_separador_inicial(vista<C> texto) noexcept {
    return texto.substr(!texto.empty() && es_separador(texto.front()) ? 1 : 0);
}

template <class C>
constexpr vista<C> i_separador_que_falta(vista<C> directorio) noexcept {
    return acaba_en_separador(directorio) ? vista<C>() : LITERAL(C, "\\");
}

// Two directories, or a directory and a name, with a "\" between them where the first ends in no separator;
// one leading separator of the second goes. A view without data counts as empty; the exported forms report it
// and answer with an empty text.
template <class C>
cadena<C> i_concatena_directorios(vista<C> directorio1, std::type_identity_t<vista<C>> directorio2) noexcept {
    return concatena<C>(
        {directorio1, i_separador_que_falta(directorio1), i_sin_separador_inicial(directorio2)});
}

// Two directories and a name. The name loses one leading separator in UTF-16 and none in 8-bit text: the
// flavours have always differed here, and callers of each rely on its own.
template <class C>
cadena<C> i_construye_path(vista<C> directorio1, std::type_identity_t<vista<C>> directorio2,
                           std::type_identity_t<vista<C>> nombre) noexcept {
    const vista<C> segundo = i_sin_separador_inicial(directorio2);
    // The first join ends as its second half does, or in the separator before it.
    const vista<C> separador = segundo.empty() ? vista<C>() : i_separador_que_falta(segundo);
    return concatena<C>({directorio1, i_separador_que_falta(directorio1), segundo, separador,
                         es_ancho<C> ? i_sin_separador_inicial(nombre) : nombre});
}

// A drive, a share or a leading "\"; never a leading "/". An incorrect path shows message 53955.
bool i_ruta_es_absoluta(vista_w ruta);

// The part of the path that follows the base, or the whole path. Message 53955 for an incorrect one of them.
vista_w i_ruta_relativa(vista_w base, vista_w ruta);

// The path on its base, or the path alone when it is absolute or either is blank.
cadena_w i_ruta_absoluta(vista_w base, vista_w ruta) noexcept;

objeto<ArrCADENA_u> i_directorios_del_path();

}  // namespace interno
