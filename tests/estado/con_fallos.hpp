// A sequence in which calls of the system fail by chance: what may then be expected is less, and never given up. What
// nobody asked to change stays as it was, no block and no handle is left, and an answer of success is true.
#pragma once

#include "estado/secuencia.hpp"

namespace estado {

// Adds to `golpes` how many calls of the system were made to fail.
desenlace corre_con_fallos(campo& c, std::uint64_t semilla, unsigned long long& golpes);

}  // namespace estado
