// The calls of the system's own library, each as one that answers with a code: what they refuse.
#include "companions/sistema.hpp"

#include "apoyo/apoyo.hpp"

using namespace interno;

TEST(sistema, un_nombre_que_no_cabe_en_su_cuenta_no_se_abre) {
    // A text is counted in 16 bits of bytes: these names would be opened as shorter ones.
    for (const std::size_t largo : {0x7FFFu, 0x8000u, 0x10001u}) {
        const std::wstring nombre(largo, L'a');
        ::SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(propias::abre_entrada(nombre.c_str(), nullptr, FILE_READ_ATTRIBUTES, FILE_SHARE_READ, 0, 0),
                  INVALID_HANDLE_VALUE)
            << largo;
        EXPECT_EQ(::GetLastError(), DWORD{ERROR_FILENAME_EXCED_RANGE}) << largo;
    }
}

TEST(sistema, el_nombre_de_lo_que_no_esta_abierto_no_se_dice) {
    const wchar_t* nombre = L"as it was";
    const wchar_t* const antes = nombre;
    DWORD unidades = 7;
    alignas(8) char bufer[256];
    ::SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(propias::nombre_de_fichero(nullptr, bufer, sizeof bufer, &nombre, &unidades));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(nombre, antes);
    EXPECT_EQ(unidades, 7u);
}
