// The entries that cut and compose, by the flavour of their texts.
#pragma once

#include "cdir.h"

namespace modelos {

template <class C>
struct entradas_corte;
template <>
struct entradas_corte<wchar_t> {
    static constexpr auto con_comprobacion = cdir_splitpath_con_comprobacion_UNICODE;
    static constexpr auto con_comodines = cdir_splitpath_con_comodines_UNICODE;
    static constexpr auto quedate = cdir_split_make_path_UNICODE;
    static constexpr auto compone = cdir_makepath_UNICODE;
    static constexpr auto compone_con_comodines = cdir_makepath_con_comodines_UNICODE;
};
template <>
struct entradas_corte<char> {
    static constexpr auto con_comprobacion = cdir_splitpath_con_comprobacion;
    static constexpr auto con_comodines = cdir_splitpath_con_comodines;
    static constexpr auto quedate = cdir_split_make_path;
    static constexpr auto compone = cdir_makepath;
    static constexpr auto compone_con_comodines = cdir_makepath_con_comodines;
};

}  // namespace modelos
