// The two length limits of the long-path library, in UTF-16 units without the terminator. Apart from the rest of
// that library because the text code asks for them and knows nothing of Windows.
#pragma once

#include <cstddef>

namespace interno {

// A path of exactly the limit is accepted.
constexpr std::size_t lmlongpath_get_longitud_maxima_permitida_path() noexcept {
    return 10240;
}
// Extension included; the limit of every Windows file system.
constexpr std::size_t lmlongpath_get_longitud_maxima_permitida_componente_incluido_extension() noexcept {
    return 255;
}

}  // namespace interno
