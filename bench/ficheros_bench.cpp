// Files and directories against Windows' own calls and std::filesystem.
#include "arbol.hpp"
#include "bancos.hpp"
#include "cdir.h"
#include "fichsdir.h"
#include "manijas.hpp"
#include "timefich.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace {

// A way of deleting and what it is held against; each deletion needs a tree of its own, whose making is not timed.
struct borrador {
    const char* nombre;
    std::function<void(const std::wstring&)> borra;
};

// The best of six rounds of each, in turn.
std::vector<double> mejores(const std::vector<borrador>& formas,
                            const std::function<std::wstring()>& haz_arbol) {
    std::vector<double> mejor(formas.size(), 1e300);
    for (int ronda = 0; ronda < 6; ++ronda) {
        for (std::size_t i = 0; i < formas.size(); ++i) {
            const std::wstring arbol = haz_arbol();
            mejor[i] = std::min(mejor[i], banco::ronda([&] { formas[i].borra(arbol); }, 1));
        }
    }
    return mejor;
}

const borrador el_nuestro = {
    "", [](const std::wstring& d) { cdir_borra_directorio_y_subdirectorios_UNICODE(d.c_str()); }};
const borrador recursion = {"hand-written recursion", bancos::borra_a_mano};
const borrador sin_comprobar = {"the same calls, unchecked", bancos::borra_por_manijas};

void borrado(const bancos::directorio_temporal& temporal) {
    const std::vector<borrador> formas = {
        el_nuestro,
        recursion,
        {"std::filesystem::remove_all", [](const std::wstring& d) { std::filesystem::remove_all(d); }},
        sin_comprobar,
        {"",
         [](const std::wstring& d) { cdir_borra_directorio_y_subdirectorios_reintentando_u(d.c_str()); }}};
    const std::vector<double> mejor =
        mejores(formas, [&] { return temporal.con_arbol(L"to delete", 6, 3, 2'000); });
    const std::string que = "delete a tree of 2,000 files in 259 directories";
    banco::escribe(que, mejor[0], {formas[1].nombre, {}, 0.55}, mejor[1]);
    banco::escribe(que, mejor[0], {formas[2].nombre, {}, 0.5}, mejor[2]);
    banco::escribe(que, mejor[0], {formas[3].nombre, {}, 0}, mejor[3]);
    banco::escribe(que + ", in passes", mejor[4], {formas[1].nombre, {}, 0.55}, mejor[1]);
}

// A directory in a directory, each with a file: what a path composed anew costs more the deeper it leads.
void cadena(const bancos::directorio_temporal& temporal) {
    constexpr int niveles = 120;
    const std::wstring raiz = L"\\\\?\\" + temporal.ruta() + L"\\chain";
    const std::vector<double> mejor = mejores({el_nuestro, recursion, sin_comprobar}, [&] {
        std::wstring actual = raiz;
        for (int n = 0; n <= niveles; ++n, actual += L"\\level") {
            ::CreateDirectoryW(actual.c_str(), nullptr);
            ::CloseHandle(::CreateFileW((actual + L"\\file").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                        0, nullptr));
        }
        return raiz;
    });
    const std::string que = "delete a chain of 120 levels";
    banco::escribe(que, mejor[0], {recursion.nombre, {}, 0.5}, mejor[1]);
    banco::escribe(que, mejor[0], {sin_comprobar.nombre, {}, 0}, mejor[2]);
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
    banco::escribe("create six levels of directories", nuestro,
                   {"std::filesystem::create_directories", {}, 1.0}, estandar);
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
                  .otros = {{"GetFileAttributesW", [&] { sumidero = ::GetFileAttributesW(relativo); }, 1.05},
                            {"the same on the full path, asked for first",
                             [&] {
                                 wchar_t completa[MAX_PATH];
                                 ::GetFullPathNameW(relativo, MAX_PATH, completa, nullptr);
                                 sumidero = ::GetFileAttributesW(completa);
                             }}},
                  .vueltas = 500});
    ::SetCurrentDirectoryW(aqui);
    creacion(temporal);
    const std::wstring diez_mil = temporal.con_ficheros(L"ten thousand", 10'000);
    banco::corre({.nombre = "file set of 10,000 files",
                  .nuestro = [&] { conjunto(diez_mil); },
                  .otros = {{"hand-written loop", [&] { conjunto_a_mano(diez_mil); }, 0.5},
                            {"the same search, keeping nothing", [&] { bancos::solo_busca(diez_mil); }}},
                  .vueltas = 1,
                  .rondas = 10});
    borrado(temporal);
    cadena(temporal);
}
