// A directory of a million files, a tree a thousand levels deep (tools/largo endurance): what one action takes of time and
// of memory for each file, and that it leaves neither a handle nor memory nor a file. Each runs in a process of its own,
// since the peak of a process's memory never falls.
#include <algorithm>

#include "apoyo/recursos.hpp"
#include "bancos.hpp"
#include "cdir.h"
#include "cdir_ficheros.h"
#include "cdir_listas.h"
#include "lumodir.h"
#include "manijas.hpp"

namespace {

using bancos::recorre_a_mano;

std::wstring larga(const std::wstring& ruta) {
    return L"\\\\?\\" + ruta;
}

std::size_t lista(const std::wstring& directorio) {
    ListaFicheros_u ficheros;
    cdir_lista_de_ficheros_UNICODE(directorio.c_str(), L"*", &ficheros);
    const std::size_t num = ficheros.num;
    cdir_libera_lista_de_ficheros_UNICODE(&ficheros);
    return num;
}
std::size_t lista_a_mano(const std::wstring& directorio) {
    std::vector<std::wstring> ficheros;
    bancos::lista_a_mano(directorio, ficheros, nullptr);
    return ficheros.size();
}
std::size_t recorre(const std::wstring& directorio) {
    unsigned long cuantas = 0;
    ListaFicheros_u* listas = nullptr;
    lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE(directorio.c_str(), L"*", &cuantas,
                                                                   &listas);
    std::size_t num = 0;
    for (unsigned long i = 0; i < cuantas; ++i) {
        num += listas[i].num;
    }
    lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(cuantas, &listas);
    return num;
}

struct accion {
    const char* nombre;
    std::size_t (*lee)(const std::wstring&);  // answers how many files it has seen
    void (*borra)(const std::wstring&);
};
constexpr accion acciones[] = {
    {"list/ours", lista, nullptr},
    {"list/by hand", lista_a_mano, nullptr},
    {"list/bare", bancos::solo_busca, nullptr},
    {"walk/ours", recorre, nullptr},
    {"walk/by hand", [](const std::wstring& d) { return recorre_a_mano(larga(d)); }, nullptr},
    {"walk/bare", bancos::lista_por_manijas, nullptr},
    {"delete/ours", nullptr,
     [](const std::wstring& d) { cdir_borra_directorio_y_subdirectorios_UNICODE(d.c_str()); }},
    {"delete/by hand", nullptr, [](const std::wstring& d) { bancos::borra_a_mano(larga(d)); }},
    {"delete/bare", nullptr, bancos::borra_por_manijas}};

}  // namespace

bool bancos::resiste(const std::string& accion, const std::wstring& directorio, std::size_t ficheros) {
    const auto* const a = std::find_if(std::begin(acciones), std::end(acciones),
                                       [&](const auto& una) { return una.nombre == accion; });
    if (a == std::end(acciones)) {
        std::fprintf(stderr, "no such action: %s\n", accion.c_str());
        return false;
    }
    // What the system keeps for itself from the first time on.
    const std::wstring otro = directorio + L" beside";
    ::CreateDirectoryW(otro.c_str(), nullptr);
    if (a->lee != nullptr) {
        a->lee(otro);
        ::RemoveDirectoryW(otro.c_str());
    } else {
        a->borra(otro);
    }
    const std::size_t manijas = apoyo::manijas_del_proceso();
    const std::size_t antes = apoyo::memoria_del_proceso().bytes;
    std::size_t quedo = 0;
    std::size_t crece = 0;
    bool bien = true;
    double ns = 1e300;
    // Twice, if it can be done again, and soon: what it leaves then it would leave each time.
    constexpr double un_minuto_ns = 60e9;
    for (const bool otra_vez : {false, true}) {
        if (otra_vez && (a->lee == nullptr || ns > un_minuto_ns)) {
            break;
        }
        if (a->lee == nullptr) {
            ns = banco::ronda([&] { a->borra(directorio); }, 1);
            if (::GetFileAttributesW(directorio.c_str()) != INVALID_FILE_ATTRIBUTES) {
                std::fprintf(stderr, "%s: the directory is still there\n", a->nombre);
                bien = false;
            }
            continue;
        }
        std::size_t vistos = 0;
        ns = std::min(ns, banco::ronda([&] { vistos = a->lee(directorio); }, 1));
        if (vistos != ficheros) {
            std::fprintf(stderr, "%s: %llu files seen of %llu\n", a->nombre,
                         static_cast<unsigned long long>(vistos), static_cast<unsigned long long>(ficheros));
            bien = false;
        }
        const std::size_t queda = apoyo::memoria_del_proceso().bytes;
        crece = otra_vez && queda > quedo ? queda - quedo : 0;
        quedo = queda;
    }
    if (apoyo::manijas_del_proceso() != manijas) {
        std::fprintf(stderr, "%s: a handle is left open\n", a->nombre);
        bien = false;
    }
    const std::size_t pico = apoyo::memoria_del_proceso().pico_bytes;
    std::printf("%s/%llu/%.0f/%.0f/%llu\n", a->nombre, static_cast<unsigned long long>(ficheros),
                ns / static_cast<double>(ficheros),
                static_cast<double>(pico - std::min(pico, antes)) / static_cast<double>(ficheros),
                static_cast<unsigned long long>(crece));
    return bien;
}
