// The attacker that is a Windows program (arena.c): moves directories of X:\t away and, into their place, decoys that
// hold the same names and links that lead outside (made on the Unix side: Wine makes none); then back again. "ramas"
// (branches of the tree), "raiz" (its root) or "sube" (chains) begins it; "basta" ends it, and is answered with the
// number of decoys that were put in place. "fin" ends the program.
//
// It moves only directories that it knows, one pair at a time, and so never reaches through a link itself.
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

struct pareja {
    std::wstring sitio;     // in the tree
    std::wstring senyuelo;  // what takes its place
};

volatile LONG g_sigue;
std::vector<pareja> g_parejas;
long g_cambios;

std::vector<pareja> del_arbol() {
    std::vector<pareja> resultado;
    for (int d = 0; d < 4; ++d) {
        const std::wstring uno = std::to_wstring(d);
        resultado.push_back({L"X:\\t\\d" + uno, L"X:\\aparte\\s" + uno});
        for (int e = 0; e < 4; ++e) {
            const std::wstring otro = std::to_wstring(e);
            resultado.push_back({L"X:\\t\\d" + uno + L"\\e" + otro, L"X:\\aparte\\s" + uno + L"_" + otro});
        }
    }
    return resultado;
}

std::vector<pareja> de_las_cadenas() {
    std::vector<pareja> resultado;
    for (int k = 0; k < 16; ++k) {
        const std::wstring uno = std::to_wstring(k);
        std::wstring sitio = L"X:\\t\\k" + uno;
        for (int c = 0; c + 1 < 6; ++c) {
            sitio += L"\\c" + std::to_wstring(c);
            resultado.push_back({sitio, L"X:\\aparte\\s" + uno + L"_" + std::to_wstring(c)});
        }
    }
    return resultado;
}

bool mueve(const std::wstring& de, const std::wstring& a) {
    return ::MoveFileExW(de.c_str(), a.c_str(), 0) != FALSE;
}

DWORD WINAPI ataca(void*) {
    const std::wstring hueco = L"X:\\aparte\\hueco";
    unsigned azar = 12345;
    while (g_sigue != 0) {
        azar = azar * 1103515245u + 12345u;
        const pareja& p = g_parejas[(azar >> 16) % g_parejas.size()];
        if (!mueve(p.sitio, hueco)) {
            continue;
        }
        if (mueve(p.senyuelo, p.sitio)) {
            ++g_cambios;
            if ((azar >> 8) % 4 == 0) {
                ::Sleep(0);
            }
            // Until it is out again nothing below is moved.
            for (int i = 0; i < 1000 && !mueve(p.sitio, p.senyuelo); ++i) {
                if (::GetLastError() == ERROR_FILE_NOT_FOUND || ::GetLastError() == ERROR_PATH_NOT_FOUND) {
                    break;
                }
            }
        }
        if (!mueve(hueco, p.sitio)) {
            // Its place is gone, or the decoy does not leave it: nothing there is touched any more.
            static unsigned numero = 0;
            mueve(hueco, hueco + std::to_wstring(++numero));
            const std::wstring perdido = p.sitio;
            std::erase_if(g_parejas, [&](const pareja& otra) { return otra.sitio.rfind(perdido, 0) == 0; });
            if (g_parejas.empty()) {
                return 0;
            }
        }
    }
    return 0;
}

}  // namespace

int main() {
    std::printf("intruso\n");
    std::fflush(stdout);
    char linea[100];
    HANDLE hilo = nullptr;
    while (std::fgets(linea, sizeof linea, stdin) != nullptr && std::strncmp(linea, "fin", 3) != 0) {
        if (std::strncmp(linea, "basta", 5) == 0) {
            g_sigue = 0;
            ::WaitForSingleObject(hilo, INFINITE);
            ::CloseHandle(hilo);
            std::printf("%ld\n", g_cambios);
        } else {
            g_parejas = linea[0] == 's' ? de_las_cadenas()
                        : std::strncmp(linea, "raiz", 4) == 0
                            ? std::vector<pareja>{{L"X:\\t", L"X:\\aparte\\sr"}}
                            : del_arbol();
            g_cambios = 0;
            g_sigue = 1;
            hilo = ::CreateThread(nullptr, 0, ataca, nullptr, 0, nullptr);
            std::printf("ya\n");
        }
        std::fflush(stdout);
    }
    return 0;
}
