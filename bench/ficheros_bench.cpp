// Files and directories against Windows' own calls and std::filesystem.
#include "arbol.hpp"
#include "bancos.hpp"
#include "cdir.h"
#include "fichsdir.h"
#include "timefich.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace {

// What a careful programmer writes: files first, then the directories below, then the directory.
void borra_a_mano(const std::wstring& directorio) {
    WIN32_FIND_DATAW datos;
    HANDLE busqueda = ::FindFirstFileExW((directorio + L"\\*").c_str(), FindExInfoBasic, &datos,
                                         FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (busqueda == INVALID_HANDLE_VALUE) {
        return;
    }
    std::vector<std::wstring> directorios;
    do {
        const std::wstring nombre = datos.cFileName;
        if ((datos.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            ::DeleteFileW((directorio + L"\\" + nombre).c_str());
        } else if (nombre != L"." && nombre != L"..") {
            directorios.push_back(directorio + L"\\" + nombre);
        }
    } while (::FindNextFileW(busqueda, &datos));
    ::FindClose(busqueda);
    for (const std::wstring& d : directorios) {
        borra_a_mano(d);
    }
    ::RemoveDirectoryW(directorio.c_str());
}

// Each deletion needs a tree of its own: making it is not timed.
double mejor_borrado(const bancos::directorio_temporal& temporal,
                     const std::function<void(const std::wstring&)>& borra) {
    const std::wstring arbol = temporal.con_arbol(L"to delete", 6, 3, 2'000);
    return banco::ronda([&] { borra(arbol); }, 1);
}

void borrado(const bancos::directorio_temporal& temporal) {
    const std::function<void(const std::wstring&)> formas[] = {
        [](const std::wstring& d) { cdir_borra_directorio_y_subdirectorios_UNICODE(d.c_str()); },
        borra_a_mano, [](const std::wstring& d) { std::filesystem::remove_all(d); },
        [](const std::wstring& d) { cdir_borra_directorio_y_subdirectorios_reintentando_u(d.c_str()); }};
    double mejor[4] = {1e300, 1e300, 1e300, 1e300};
    for (int ronda = 0; ronda < 6; ++ronda) {
        for (int i = 0; i < 4; ++i) {
            mejor[i] = std::min(mejor[i], mejor_borrado(temporal, formas[i]));
        }
    }
    const char* const fila =
        "| delete a tree of 2,000 files in 259 directories%s | %s | %s | %s | %.2f | %.2f |\n";
    const auto escribe = [&](const char* que, int nuestro, const char* contra, int otro, double objetivo) {
        std::printf(fila, que, banco::con_unidad(mejor[nuestro]).c_str(), contra,
                    banco::con_unidad(mejor[otro]).c_str(), mejor[nuestro] / mejor[otro], objetivo);
    };
    escribe("", 0, "hand-written recursion", 1, 0.55);
    escribe("", 0, "std::filesystem::remove_all", 2, 0.5);
    escribe(", in passes", 3, "hand-written recursion", 1, 0.55);
}

// A directory in a directory, each with a file: what a path composed anew costs more the deeper it leads.
void cadena(const bancos::directorio_temporal& temporal) {
    constexpr int niveles = 120;
    const std::wstring raiz = L"\\\\?\\" + temporal.ruta() + L"\\chain";
    const std::function<void()> formas[] = {
        [&] { cdir_borra_directorio_y_subdirectorios_UNICODE(raiz.c_str()); }, [&] { borra_a_mano(raiz); }};
    double mejor[2] = {1e300, 1e300};
    for (int ronda = 0; ronda < 6; ++ronda) {
        for (int i = 0; i < 2; ++i) {
            std::wstring actual = raiz;
            for (int n = 0; n <= niveles; ++n, actual += L"\\level") {
                ::CreateDirectoryW(actual.c_str(), nullptr);
                ::CloseHandle(::CreateFileW((actual + L"\\file").c_str(), GENERIC_WRITE, 0, nullptr,
                                            CREATE_NEW, 0, nullptr));
            }
            mejor[i] = std::min(mejor[i], banco::ronda(formas[i], 1));
        }
    }
    std::printf("| delete a chain of 120 levels | %s | hand-written recursion | %s | %.2f | 0.50 |\n",
                banco::con_unidad(mejor[0]).c_str(), banco::con_unidad(mejor[1]).c_str(),
                mejor[0] / mejor[1]);
}

void creacion(const bancos::directorio_temporal& temporal) {
    const std::wstring raiz = temporal.ruta() + L"\\levels";
    const std::wstring hondo = raiz + L"\\a\\b\\c\\d\\e";
    double nuestro = 1e300;
    double estandar = 1e300;
    for (int ronda = 0; ronda < 60; ++ronda) {
        nuestro = std::min(nuestro,
                           banco::ronda([&] { cdir_crea_directorios_del_path_UNICODE(hondo.c_str()); }, 1));
        std::filesystem::remove_all(raiz);
        estandar = std::min(estandar, banco::ronda([&] { std::filesystem::create_directories(hondo); }, 1));
        std::filesystem::remove_all(raiz);
    }
    std::printf(
        "| create six levels of directories | %s | std::filesystem::create_directories | %s | %.2f | 1.00 "
        "|\n",
        banco::con_unidad(nuestro).c_str(), banco::con_unidad(estandar).c_str(), nuestro / estandar);
}

// The record of a file set, as the hand-written loop builds it.
struct ficha {
    std::string nombre;
    long long fecha;
    bool protegido;
    std::wstring ruta;
};

void conjunto_a_mano(const std::wstring& directorio) {
    std::vector<ficha> fichas;
    WIN32_FIND_DATAW datos;
    HANDLE busqueda = ::FindFirstFileExW((directorio + L"\\*").c_str(), FindExInfoBasic, &datos,
                                         FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    do {
        if ((datos.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            continue;
        }
        char nombre[MAX_PATH * 2];
        ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, datos.cFileName, -1, nombre, sizeof nombre,
                              nullptr, nullptr);
        SYSTEMTIME utc, local;
        FILETIME pared;
        ::FileTimeToSystemTime(&datos.ftLastWriteTime, &utc);
        ::SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local);
        ::SystemTimeToFileTime(&local, &pared);
        const long long cien_ns = static_cast<long long>(pared.dwHighDateTime) << 32 | pared.dwLowDateTime;
        fichas.push_back({nombre, (cien_ns - 116'444'736'000'000'000) / 10'000'000,
                          (datos.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0, directorio});
    } while (::FindNextFileW(busqueda, &datos));
    ::FindClose(busqueda);
    banco::usa(fichas.data());
}

void conjunto(const std::wstring& directorio) {
    ArrPunteroConTipo* fichas = fichsdir_ficheros_u(directorio.c_str());
    arr_DestruyeEstructurasConTipo(&fichas, reinterpret_cast<void (*)(void**)>(fichsdir_destruye));
}

}  // namespace

void bancos::ficheros() {
    const directorio_temporal temporal;
    const std::wstring fichero = temporal.con_ficheros(L"one", 1) + L"\\Photo 00000000 of the site.png";
    volatile unsigned long long sumidero = 0;
    banco::corre(
        {.nombre = "does a file exist",
         .nuestro = [&] { sumidero = cdir_existe_fichero_UNICODE(fichero.c_str()); },
         .otros = {{"GetFileAttributesW", [&] { sumidero = ::GetFileAttributesW(fichero.c_str()); }, 1.03}},
         .vueltas = 500});
    banco::corre({.nombre = "date of a file",
                  .nuestro =
                      [&] {
                          sumidero = static_cast<unsigned long long>(
                              timefich_obtener_fecha_fichero_UTC(fichero.c_str()));
                      },
                  .otros = {{"GetFileAttributesExW",
                             [&] {
                                 WIN32_FILE_ATTRIBUTE_DATA datos;
                                 ::GetFileAttributesExW(fichero.c_str(), GetFileExInfoStandard, &datos);
                                 sumidero = datos.ftLastWriteTime.dwLowDateTime;
                             },
                             1.03}},
                  .vueltas = 500});
    wchar_t aqui[MAX_PATH];
    ::GetCurrentDirectoryW(MAX_PATH, aqui);
    ::SetCurrentDirectoryW(temporal.ruta().c_str());
    const wchar_t* const relativo = L"one\\Photo 00000000 of the site.png";
    banco::corre({.nombre = "does a file exist, relative path",
                  .nuestro = [&] { sumidero = cdir_existe_fichero_UNICODE(relativo); },
                  .otros = {{"GetFileAttributesW", [&] { sumidero = ::GetFileAttributesW(relativo); }, 1.05}},
                  .vueltas = 500});
    ::SetCurrentDirectoryW(aqui);
    creacion(temporal);
    const std::wstring diez_mil = temporal.con_ficheros(L"ten thousand", 10'000);
    banco::corre({.nombre = "file set of 10,000 files",
                  .nuestro = [&] { conjunto(diez_mil); },
                  .otros = {{"hand-written loop", [&] { conjunto_a_mano(diez_mil); }, 0.5}},
                  .vueltas = 1,
                  .rondas = 10});
    borrado(temporal);
    cadena(temporal);
}
