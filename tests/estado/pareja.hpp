// Two at once on the same directory, as threads or as processes: a few calls each, and what both were answered and what
// the disk holds afterwards must be what some order of the calls explains.
#pragma once

#include "estado/secuencia.hpp"

namespace estado {

enum class juntos { hilos, procesos };

// "" when some order explains it; else what happened.
std::string corre_pareja(campo& c, juntos como, std::uint64_t semilla);

}  // namespace estado
