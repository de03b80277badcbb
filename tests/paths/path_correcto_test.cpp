// The path checker against its rules, row by row, in both flavours.
#include "apoyo/apoyo.hpp"
#include "cdir.h"
#include "paths/path_correcto.hpp"

using namespace apoyo;

TEST(path_correcto, un_path_de_fichero_es_valido) {
    EXPECT_EQ(cdir_path_valido_UNICODE(L"C:\\dir\\file.txt", 1), 1);
    EXPECT_EQ(cdir_path_valido("C:\\dir\\file.txt", 1), 1);
}
