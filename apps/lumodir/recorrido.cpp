#include "recorrido.hpp"

#include <algorithm>
#include <atomic>

#include "lumodir.hpp"
#include "sistema_windows.hpp"
#include "textos.hpp"

namespace mando {

namespace {

std::atomic<unsigned long long> leidas{0};
std::atomic<double> recorrida{0};  // of the walk at work, from 0 to 1

std::wstring i_completa(const std::wstring& ruta) {
    const unsigned long unidades = GetFullPathNameW(ruta.c_str(), 0, nullptr, nullptr);
    std::wstring completa(unidades, L'\0');
    completa.resize(GetFullPathNameW(ruta.c_str(), unidades, completa.data(), nullptr));
    return completa;
}

bool i_lleva_prefijo(std::wstring_view ruta) {
    return ruta.starts_with(L"\\\\?\\") || ruta.starts_with(L"\\\\.\\");
}

// The full path as Windows understands it, in the form of the exact one.
std::wstring i_usual(const std::wstring& ruta, const std::wstring& exacta) {
    std::wstring usual = i_completa(ruta);
    if (!i_lleva_prefijo(usual)) {
        usual = usual.starts_with(L"\\\\") ? L"\\\\?\\UNC" + usual.substr(1) : L"\\\\?\\" + usual;
    }
    while (usual.size() > exacta.size() && usual.back() == L'\\') {
        usual.pop_back();
    }
    // The root of a share, which needs no separator.
    if (exacta.ends_with(L'\\') && !usual.ends_with(L'\\')) {
        usual += L'\\';
    }
    return usual;
}

std::vector<std::wstring> i_componentes(std::wstring_view ruta) {
    std::vector<std::wstring> partes;
    while (!ruta.empty()) {
        const size_t fin = std::min(ruta.find(L'\\'), ruta.size());
        if (fin > 0) {
            partes.emplace_back(ruta.substr(0, fin));
        }
        ruta.remove_prefix(std::min(fin + 1, ruta.size()));
    }
    return partes;
}

// Splits a path into the directory that it starts from ("" when it begins with a root of its own), which is returned,
// and the rest, which stays in `ruta`.
std::wstring i_desde(std::wstring& ruta) {
    if (ruta.starts_with(L"\\\\")) {
        return {};
    }
    if (ruta.size() >= 2 && ruta[1] == L':') {
        if (ruta.size() >= 3 && ruta[2] == L'\\') {
            return {};
        }
        const std::wstring unidad = ruta.substr(0, 2);
        ruta.erase(0, 2);
        return i_completa(unidad);  // its own current directory
    }
    return i_completa(ruta.starts_with(L'\\') ? L"\\" : L".");
}

long long i_segundos(const FILETIME& fecha) {
    // From 1601 in units of 100 ns to 1970 in seconds.
    constexpr long long segundos_hasta_1970 = 11644473600, por_segundo = 10000000;
    const auto unidades = static_cast<long long>(static_cast<unsigned long long>(fecha.dwHighDateTime) << 32 |
                                                 fecha.dwLowDateTime);
    return unidades / por_segundo - segundos_hasta_1970;
}

entrada i_entrada(const WIN32_FIND_DATAW& e) {
    entrada una;
    una.nombre = e.cFileName;
    una.atributos = e.dwFileAttributes;
    una.bytes = static_cast<unsigned long long>(e.nFileSizeHigh) << 32 | e.nFileSizeLow;
    una.modificada = i_segundos(e.ftLastWriteTime);
    una.creada = i_segundos(e.ftCreationTime);
    una.es_directorio = (e.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    // Placeholders of cloud storage are reparse points too, but stand for themselves. The tag is in the entry.
    constexpr unsigned long sustituye_al_nombre = 0x20000000;
    una.es_enlace = (e.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
                    (e.dwReserved0 == 0 || (e.dwReserved0 & sustituye_al_nombre) != 0);
    una.bytes = una.es_directorio || una.es_enlace ? 0 : una.bytes;
    return una;
}

// The root of a drive has no "." and may be empty.
unsigned long i_salvo_vacio(unsigned long codigo) {
    return codigo == ERROR_FILE_NOT_FOUND || codigo == ERROR_NO_MORE_FILES ? 0 : codigo;
}

void i_lee(carpeta& c) {
    lumodir::dirwin::enumerador entradas(bajo_de(c.del_sistema, L"*"));
    for (const WIN32_FIND_DATAW& e : entradas) {
        const std::wstring_view nombre = e.cFileName;
        if (nombre != L"." && nombre != L"..") {
            c.entradas.push_back(i_entrada(e));
            leidas.fetch_add(1, std::memory_order_relaxed);
        }
    }
    c.codigo = i_salvo_vacio(entradas.codigo());
    c.leida = c.codigo == 0;
    std::sort(c.entradas.begin(), c.entradas.end(),
              [](const entrada& a, const entrada& b) { return compara_nombres(a.nombre, b.nombre) < 0; });
}

}  // namespace

std::wstring ruta_exacta(const std::wstring& ruta) {
    if (i_lleva_prefijo(ruta)) {
        return ruta;
    }
    std::wstring resto = ruta;
    std::replace(resto.begin(), resto.end(), L'/', L'\\');
    const std::wstring desde = i_desde(resto);
    const bool de_red = (desde.empty() ? resto : desde).starts_with(L"\\\\");
    std::vector<std::wstring> partes = i_componentes(desde);
    for (std::wstring& parte : i_componentes(resto)) {
        partes.push_back(std::move(parte));
    }
    const size_t de_la_raiz = de_red ? 2 : 1;  // server and share, or the drive
    std::vector<std::wstring> quedan;
    for (std::wstring& parte : partes) {
        if (parte == L"..") {
            if (quedan.size() > de_la_raiz) {
                quedan.pop_back();
            }
        } else if (parte != L".") {
            quedan.push_back(std::move(parte));
        }
    }
    std::wstring exacta = de_red ? L"\\\\?\\UNC" : L"\\\\?";
    for (const std::wstring& parte : quedan) {
        exacta += L'\\' + parte;
    }
    return quedan.size() <= de_la_raiz ? exacta + L'\\' : exacta;
}

std::wstring ruta_de_trabajo(const std::wstring& ruta) {
    if (i_lleva_prefijo(ruta) || sin_blancos(ruta).empty()) {
        return ruta;
    }
    // Where the entry is missing, the nearest directory above that is there decides.
    for (std::wstring hasta = ruta;;) {
        const std::wstring exacta = ruta_exacta(hasta);
        if (exacta == i_usual(hasta, exacta)) {
            return ruta;
        }
        if (GetFileAttributesW(exacta.c_str()) != INVALID_FILE_ATTRIBUTES) {
            return ruta_exacta(ruta);
        }
        hasta.erase(std::min(hasta.find_last_not_of(L"\\/"), hasta.size() - 1) + 1);
        const size_t fin = hasta.find_last_of(L"\\/");
        if (fin == hasta.npos || fin == 0) {
            return ruta;
        }
        hasta.erase(fin);
    }
}

namespace {

// What the library means by the path that it is handed, in the form that takes every name.
std::wstring i_de_trabajo_exacta(const std::wstring& ruta) {
    std::wstring exacta = ruta_exacta(ruta);
    if (i_lleva_prefijo(ruta) || ruta_de_trabajo(ruta) != ruta) {
        return exacta;
    }
    std::wstring usual = i_usual(ruta, exacta);
    return usual.starts_with(L"\\\\.\\") ? exacta : usual;
}

std::wstring_view i_ultimo_nombre(std::wstring_view ruta) {
    ruta = ruta.substr(0, ruta.find_last_not_of(L'\\') + 1);
    return ruta.substr(ruta.find_last_of(L'\\') + 1);
}

}  // namespace

bool es_su_nombre(const std::wstring& ruta) {
    const std::wstring exacta = ruta_exacta(ruta), de_trabajo = i_de_trabajo_exacta(ruta);
    return i_ultimo_nombre(exacta) == i_ultimo_nombre(de_trabajo);
}

std::wstring bajo_de(const std::wstring& directorio, const std::wstring& nombre) {
    const bool basta =
        directorio.ends_with(L'\\') || directorio.ends_with(L'/') || directorio.ends_with(L':');
    return basta ? directorio + nombre : directorio + L'\\' + nombre;
}

carpeta lee_carpeta(const std::wstring& ruta) {
    carpeta c{.ruta = ruta, .bajo = L".", .del_sistema = i_de_trabajo_exacta(ruta)};
    i_lee(c);
    return c;
}

unsigned long por_que_no_se_lee(const std::wstring& ruta) {
    return i_salvo_vacio(lumodir::dirwin::enumerador(bajo_de(i_de_trabajo_exacta(ruta), L"*")).codigo());
}

void recorre_arbol(const std::wstring& base, const std::function<void(carpeta&)>& visita) {
    const auto se_entra = [](const entrada& e) { return e.es_carpeta() && e.se_entra; };
    std::vector<carpeta> pendientes;
    pendientes.push_back({.ruta = base, .bajo = L".", .del_sistema = i_de_trabajo_exacta(base)});
    recorrida = 0;
    while (!pendientes.empty()) {
        carpeta c = std::move(pendientes.back());
        pendientes.pop_back();
        i_lee(c);
        visita(c);
        // Nobody knows beforehand how much lies below a directory: all on one level count alike.
        const auto debajo = std::count_if(c.entradas.begin(), c.entradas.end(), se_entra);
        const double de_cada_una = c.parte / static_cast<double>(debajo + 1);
        recorrida = recorrida + de_cada_una;
        for (size_t i = c.entradas.size(); i-- > 0;) {
            const entrada& e = c.entradas[i];
            if (se_entra(e)) {
                pendientes.push_back({.ruta = bajo_de(c.ruta, e.nombre),
                                      .bajo = c.nivel == 0 ? e.nombre : c.bajo + L'\\' + e.nombre,
                                      .del_sistema = bajo_de(c.del_sistema, e.nombre),
                                      .nivel = c.nivel + 1,
                                      .parte = de_cada_una});
            }
        }
    }
    recorrida = 0;
}

void suma(recuento& total, const carpeta& c) {
    ++total.directorios;
    if (!c.leida) {
        total.codigo_ilegible = total.ilegibles.empty() ? c.codigo : total.codigo_ilegible;
        total.ilegibles.push_back(c.ruta);
    }
    for (const entrada& e : c.entradas) {
        total.enlaces += e.es_enlace ? 1 : 0;
        total.ficheros += e.es_enlace || e.es_directorio ? 0 : 1;
        total.bytes += e.bytes;
    }
}

unsigned long long entradas_leidas() {
    return leidas.load(std::memory_order_relaxed);
}

double parte_recorrida() {
    return recorrida.load(std::memory_order_relaxed);
}

std::optional<entrada> entrada_de(const std::wstring& ruta) {
    std::wstring exacta = i_de_trabajo_exacta(ruta);
    exacta.erase(exacta.find_last_not_of(L'\\') + 1);
    WIN32_FIND_DATAW e;
    // Not by the enumerator, whose own filter takes "readme" for "readme.txt".
    const HANDLE asa = FindFirstFileW(exacta.c_str(), &e);
    if (asa == INVALID_HANDLE_VALUE) {
        return std::nullopt;
    }
    FindClose(asa);
    return i_entrada(e);
}

int compara_nombres(const std::wstring& a, const std::wstring& b) {
    const int orden = CompareStringOrdinal(a.c_str(), static_cast<int>(a.size()), b.c_str(),
                                           static_cast<int>(b.size()), TRUE) -
                      CSTR_EQUAL;
    return orden != 0 ? orden : a.compare(b);
}

bool es_patron(const std::wstring& ruta) {
    constexpr size_t prefijo = 4;  // \\?\ is no pattern
    return ruta.find_first_of(L"*?", ruta.starts_with(L"\\\\?\\") ? prefijo : 0) != ruta.npos;
}

bool cumple_patron_exacto(const std::wstring& n, const std::wstring& p) {
    if (p == L"*.*") {
        return true;
    }
    size_t i = 0, j = 0, tras_estrella = p.npos, vuelta = 0;
    while (i < n.size()) {
        if (j < p.size() && p[j] == L'*') {
            tras_estrella = ++j;
            vuelta = i;
        } else if (j < p.size() && p[j] == L'?') {
            // One character, which may be two units.
            i += i + 1 < n.size() && IS_SURROGATE_PAIR(n[i], n[i + 1]) ? 2 : 1;
            ++j;
        } else if (j < p.size() && p[j] == n[i]) {
            ++i;
            ++j;
        } else if (tras_estrella != p.npos) {
            j = tras_estrella;
            i = ++vuelta;
        } else {
            return false;
        }
    }
    return p.find_first_not_of(L'*', j) == p.npos;
}

bool cumple_patron(const std::wstring& nombre, const std::wstring& patron) {
    return cumple_patron_exacto(en_mayusculas(nombre), en_mayusculas(patron));
}

}  // namespace mando
