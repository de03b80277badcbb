// The victim of the attack (arena.c): a host that deletes and lists X:\t through the finished DLL.
//
//     victima.exe PATH-OF-THE-DLL
//
// For each number that it reads, the place of a function in the table below, it calls that function and answers how
// many of the sentinels' names came back. "fin" ends it.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "cdir.h"
#include "companions/arr.h"
#include "companions/error_interno.h"
#include "lumodir.h"

namespace {

HMODULE biblioteca;

// Fetched by name, so that any build of the DLL can be the victim.
template <class Funcion>
Funcion* de(const char* nombre) {
    auto* const funcion =
        reinterpret_cast<Funcion*>(reinterpret_cast<void*>(::GetProcAddress(biblioteca, nombre)));
    if (funcion == nullptr) {
        std::fprintf(stderr, "the DLL has no %s\n", nombre);
        std::exit(2);
    }
    return funcion;
}
#define LLAMA(Funcion) de<decltype(Funcion)>(#Funcion)

constexpr const wchar_t* arbol = L"X:\\t";
constexpr int veces_que_se_lista = 5;
constexpr int cadenas = 16;

void calla(const char*, const char*, unsigned long, const wchar_t*, void*) {}

using listado = decltype(lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE);
long vistos(listado* lista) {
    long num_vistos = 0;
    for (int i = 0; i < veces_que_se_lista; ++i) {
        unsigned long num = 0;
        ListaFicheros_u* listas = nullptr;
        lista(arbol, nullptr, &num, &listas);
        for (unsigned long k = 0; k < num; ++k) {
            for (unsigned long n = 0; n < listas[k].num; ++n) {
                num_vistos += std::wcscmp(listas[k].lista[n], L"centinela") == 0 ? 1 : 0;
            }
        }
        LLAMA(lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE)(num, &listas);
    }
    return num_vistos;
}

long contenido() {
    LLAMA(cdir_borra_contenido_directorio_UNICODE)(arbol);
    return 0;
}
long estricto() {
    LLAMA(cdir_borra_directorio_y_subdirectorios_UNICODE)(arbol);
    return 0;
}
long parando() {
    unsigned short sigue = 1;
    LLAMA(cdir_borra_directorio_y_subdirectorios_parando)(arbol, &sigue);
    return 0;
}
long contenido_reintentando() {
    LLAMA(cdir_borra_contenido_directorio_reintentando_u)(arbol);
    return 0;
}
long si_es_posible() {
    LLAMA(cdir_borra_contenido_directorio_si_es_posible_reintentando_u)(arbol);
    return 0;
}
long reintentando() {
    LLAMA(cdir_borra_directorio_y_subdirectorios_reintentando_u)(arbol);
    return 0;
}
long una_pasada() {
    LLAMA(cdir_borra_directorio_y_subdirectorios_si_se_puede_UNICODE)(arbol, nullptr);
    return 0;
}
long sube() {
    for (int k = 0; k < cadenas; ++k) {
        wchar_t ruta[200];
        _snwprintf(ruta, 200, L"%ls\\k%d\\c0\\c1\\c2\\c3\\c4\\c5", arbol, k);
        LLAMA(lumodir_borra_directorios_de_path_si_estan_vacios_UNICODE)(ruta, arbol);
    }
    return 0;
}
long con_ficheros() {
    return vistos(LLAMA(lumodir_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE));
}
long todos() {
    return vistos(LLAMA(lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE));
}

// In the order of the table of arena.c.
long (*const funciones[])() = {contenido,    estricto,   parando, contenido_reintentando, si_es_posible,
                               reintentando, una_pasada, sube,    con_ficheros,           todos};

}  // namespace

int main(int argc, char** argv) {
    biblioteca = argc == 2 ? ::LoadLibraryA(argv[1]) : nullptr;
    if (biblioteca == nullptr) {
        std::fprintf(stderr, "victima.exe PATH-OF-THE-DLL (error %lu)\n", ::GetLastError());
        return 2;
    }
    LLAMA(error_interno_establece_receptor)(calla, nullptr);
    LLAMA(lumodir_establece_modo_servicio_sin_reintentos)();
    std::printf("victima\n");
    std::fflush(stdout);
    char linea[100];
    while (std::fgets(linea, sizeof linea, stdin) != nullptr && std::strncmp(linea, "fin", 3) != 0) {
        const auto cual = static_cast<unsigned>(std::atoi(linea));
        if (cual >= sizeof funciones / sizeof funciones[0]) {
            return 2;
        }
        std::printf("%ld\n", funciones[cual]());
        std::fflush(stdout);
    }
    return 0;
}
