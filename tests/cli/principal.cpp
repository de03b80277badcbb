#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>

#include "apoyo/temporal.hpp"

// Besides the tests, two roles for the children that some of them need:
//     test_cli --hold FILE MS    keeps a file or a directory open, sharing nothing
//     test_cli --sleep MS        waits
int main(int argc, char** argv) {
    if (argc == 4 && std::strcmp(argv[1], "--hold") == 0) {
        // Whoever looks whether it is held already may be in the way.
        while (CreateFileA(argv[2], GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                           nullptr) == INVALID_HANDLE_VALUE &&
               GetLastError() == ERROR_SHARING_VIOLATION) {
            Sleep(1);
        }
        Sleep(static_cast<DWORD>(std::strtoul(argv[3], nullptr, 10)));
        return 0;
    }
    if (argc == 3 && std::strcmp(argv[1], "--sleep") == 0) {
        Sleep(static_cast<DWORD>(std::strtoul(argv[2], nullptr, 10)));
        return 0;
    }
    apoyo::va_al_temporal_pedido();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
