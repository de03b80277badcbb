// Keeps a file open, sharing nothing, until its standard input ends: somebody else's program, for tools/demo.
//     retiene FILE
#include <windows.h>

#include <cstdio>

int main(int argc, char** argv) {
    HANDLE fichero = argc == 2 ? CreateFileA(argv[1], GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)
                               : INVALID_HANDLE_VALUE;
    if (fichero == INVALID_HANDLE_VALUE) {
        std::puts("not held");
        return 1;
    }
    std::puts("held");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}
