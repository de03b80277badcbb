// The exports of wine.h.
#include "wine.h"

#include "abi/exportacion.hpp"
#include "system/wine.hpp"

using namespace interno;

unsigned short wine_estamos_en_wine(void) {
    return logico(i_estamos_en_wine());
}
