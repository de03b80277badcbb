// Path names: checking, splitting, taking the name and joining, on the paths of rutas_de_muestra.txt: all of them mixed,
// and each kind by itself, in both flavours. Against a bare scan, the C runtime, std::filesystem, std::wstring; 8-bit
// functions against their wide twins.
#include <array>
#include <atomic>
#include <cstdlib>
#include <cwchar>
#include <filesystem>
#include <fstream>
#include <map>

#include "bancos.hpp"
#include "cdir.h"
#include "companions/lumospy.h"
#include "companions/lumostr.h"
#include "companions/widestr.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace {

using rutas_w = std::vector<std::wstring>;
using rutas_a = std::vector<std::string>;

volatile unsigned sumidero = 0;

std::wstring de_utf8(const std::string& texto) {
    std::wstring ancho(texto.size(), L'\0');
    ancho.resize(static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, texto.data(),
                                                                static_cast<int>(texto.size()), ancho.data(),
                                                                static_cast<int>(ancho.size()))));
    return ancho;
}

// Empty where the code page lacks a character.
std::string a_8_bits(const std::wstring& texto) {
    std::string corto(texto.size() * 3, '\0');
    BOOL falta = FALSE;
    const bool utf8 = ::GetACP() == CP_UTF8;
    corto.resize(static_cast<std::size_t>(::WideCharToMultiByte(
        CP_ACP, utf8 ? 0 : WC_NO_BEST_FIT_CHARS, texto.data(), static_cast<int>(texto.size()), corto.data(),
        static_cast<int>(corto.size()), nullptr, utf8 ? nullptr : &falta)));
    return falta ? std::string() : corto;
}

bool es_ascii(const std::wstring& texto) {
    return std::all_of(texto.begin(), texto.end(), [](wchar_t c) { return c < 0x80; });
}

// The sample, by kind; "mixed" is all of it. Each line has its kind, a tabulator and the path.
std::map<std::string, rutas_w> lee_muestra() {
    std::map<std::string, rutas_w> muestra;
    std::ifstream fichero(LUMODIR_MUESTRA);
    for (std::string linea; std::getline(fichero, linea);) {
        const std::size_t fin = linea.find('\t');
        const std::wstring ruta = de_utf8(linea.substr(fin + 1));
        muestra[linea.substr(0, fin)].push_back(ruta);
        muestra["mixed"].push_back(ruta);
    }
    if (muestra["mixed"].size() != 1000) {
        std::printf("the sample of paths could not be read\n");
        std::exit(1);
    }
    return muestra;
}

// A character in each that no name may hold, near its beginning in one, near its end in another.
rutas_w con_caracter(rutas_w rutas, wchar_t c) {
    std::size_t n = 0;
    for (std::wstring& ruta : rutas) {
        ruta[ruta.size() * (n++ % 8 + 1) / 9] = c;
    }
    return rutas;
}

// Each with one component more.
rutas_w con_componente(rutas_w rutas, const std::wstring& componente) {
    for (std::wstring& ruta : rutas) {
        ruta += L'\\' + componente;
    }
    return rutas;
}

// By what is wrong with them.
std::map<std::string, rutas_w> invalidas_de(const rutas_w& rutas) {
    return {{"invalid, no message", con_caracter(rutas, L'|')},
            {"invalid by a control character, no message", con_caracter(rutas, L'\t')},
            {"invalid by a reserved name, no message", con_componente(rutas, L"nul.txt")},
            {"invalid by a long component, no message", con_componente(rutas, std::wstring(300, L'x'))}};
}

// The last component of each, without the blanks at its end, which the checks of names would remove in place.
rutas_w nombres_de(rutas_w rutas) {
    for (std::wstring& ruta : rutas) {
        ruta.erase(0, ruta.find_last_of(L"\\/:") + 1);
        ruta.erase(ruta.find_last_not_of(L' ') + 1);
    }
    return rutas;
}

void libera(wchar_t* texto) {
    widestr_nousar_destruye(&texto, "bench", 1);
}
void libera(char* texto) {
    lumostr_destruye(&texto);
}

// Reads every unit once and keeps something of each.
unsigned recorre(const wchar_t* p) {
    unsigned suma = 0;
    for (; *p != 0; ++p) {
        suma += static_cast<unsigned short>(*p);
    }
    return suma;
}

// A unit of work goes over all the paths.
template <class Rutas, class Haz>
std::function<void()> por_todas(const Rutas& rutas, Haz haz) {
    return [&rutas, haz] {
        for (const auto& ruta : rutas) {
            haz(ruta.c_str());
        }
    };
}

unsigned numero(const rutas_w& rutas) {
    return static_cast<unsigned>(rutas.size());
}

void analiza(const wchar_t* ruta) {
    const std::filesystem::path p(ruta);
    sumidero = static_cast<unsigned>(std::distance(p.begin(), p.end()));
}

void compara_comprobacion(const std::string& clase, const rutas_w& rutas, double frente_a_recorrer) {
    const banco::contendiente recorrido = {"a bare scan of its units",
                                           por_todas(rutas, [](const wchar_t* p) { sumidero = recorre(p); }),
                                           frente_a_recorrer};
    const banco::contendiente analisis = {"std::filesystem::path parsing it", por_todas(rutas, analiza),
                                          0.08};
    banco::corre(
        {.nombre = "check a path (" + clase + ")",
         .nuestro = por_todas(rutas, [](const wchar_t* p) { sumidero = cdir_path_valido_UNICODE(p, 0); }),
         .otros = {recorrido, analisis},
         .vueltas = 100'000 / numero(rutas),
         .elementos = numero(rutas)});
    if (clase.starts_with("invalid")) {
        return;  // there the reason is a text, made anew
    }
    banco::corre({.nombre = "check a path, the reason wanted (" + clase + ")",
                  .nuestro = por_todas(rutas,
                                       [](const wchar_t* p) {
                                           wchar_t* motivo = nullptr;
                                           sumidero = cdir_es_path_valido_UNICODE(p, &motivo);
                                       }),
                  .otros = {recorrido, analisis},
                  .vueltas = 100'000 / numero(rutas),
                  .elementos = numero(rutas)});
}

// What follows the last point of each name, without it.
rutas_w extensiones_de(rutas_w nombres) {
    for (std::wstring& nombre : nombres) {
        const std::size_t punto = nombre.rfind(L'.');
        nombre.erase(0, punto == std::wstring::npos ? nombre.size() : punto + 1);
    }
    return nombres;
}

// The checks of a name by itself. What they take in place has nothing to be removed, so each round sees the same.
void compara_nombres(const std::string& clase, const rutas_w& rutas, double frente_a_recorrer) {
    const rutas_w nombres = nombres_de(rutas);
    const rutas_w extensiones = extensiones_de(nombres);
    const auto fila = [&](const std::string& que, const rutas_w& textos, auto comprueba) {
        banco::corre({.nombre = que + " (" + clase + ")",
                      .nuestro = por_todas(textos, comprueba),
                      .otros = {{"a bare scan of its units",
                                 por_todas(textos, [](const wchar_t* p) { sumidero = recorre(p); }),
                                 frente_a_recorrer},
                                {"std::filesystem::path parsing it", por_todas(textos, analiza), 0.08}},
                      .vueltas = 100'000 / numero(textos),
                      .elementos = numero(textos)});
    };
    fila("check a base name", nombres,
         [](const wchar_t* p) { sumidero = cdir_nombre_base_valido_UNICODE(const_cast<wchar_t*>(p)); });
    fila("check a file name", nombres,
         [](const wchar_t* p) { sumidero = cdir_nombre_fichero_valido(const_cast<wchar_t*>(p)); });
    fila("check an extension", extensiones,
         [](const wchar_t* p) { sumidero = cdir_extension_valida_UNICODE(p); });
}

void corta(const wchar_t* ruta) {
    wchar_t *unidad, *directorio, *nombre, *extension;
    cdir_splitpath_con_comprobacion_UNICODE(ruta, &unidad, &directorio, &nombre, &extension);
    libera(unidad);
    libera(directorio);
    libera(nombre);
    libera(extension);
}
void corta(const char* ruta) {
    char *unidad, *directorio, *nombre, *extension;
    cdir_splitpath_con_comprobacion(ruta, &unidad, &directorio, &nombre, &extension);
    libera(unidad);
    libera(directorio);
    libera(nombre);
    libera(extension);
}

void corta_con_el_crt(const wchar_t* ruta) {
    wchar_t unidad[8], directorio[1024], nombre[260], extension[260];
    _wsplitpath_s(ruta, unidad, 8, directorio, 1024, nombre, 260, extension, 260);
    sumidero = static_cast<unsigned>(unidad[0] + directorio[0] + nombre[0] + extension[0]);
}

void corta_con_filesystem(const wchar_t* ruta) {
    const std::filesystem::path p(ruta);
    const std::wstring unidad = p.root_name().wstring();
    const std::wstring directorio = p.parent_path().wstring();
    const std::wstring nombre = p.stem().wstring();
    const std::wstring extension = p.extension().wstring();
    sumidero = static_cast<unsigned>(unidad.size() + directorio.size() + nombre.size() + extension.size());
}

// What four new strings cost before anything is cut: their blocks, of the sizes that the pieces have.
std::function<void()> los_cuatro_bloques(const rutas_w& rutas) {
    std::vector<std::array<std::size_t, 4>> bytes;
    for (const std::wstring& ruta : rutas) {
        wchar_t* piezas[4];
        cdir_splitpath_con_comprobacion_UNICODE(ruta.c_str(), &piezas[0], &piezas[1], &piezas[2], &piezas[3]);
        bytes.emplace_back();
        for (std::size_t i = 0; i < 4; ++i) {
            bytes.back()[i] = (std::wcslen(piezas[i]) + 1) * sizeof(wchar_t);
            libera(piezas[i]);
        }
    }
    return [bytes] {
        for (const auto& cuatro : bytes) {
            void* bloques[4];
            for (std::size_t i = 0; i < 4; ++i) {
                bloques[i] = std::malloc(cuatro[i]);
                banco::usa(bloques[i]);
            }
            for (void* bloque : bloques) {
                std::free(bloque);
            }
        }
    };
}

void compara_corte(const std::string& clase, const rutas_w& rutas) {
    banco::corre({.nombre = "split into four new strings (" + clase + ")",
                  .nuestro = por_todas(rutas, [](const wchar_t* p) { corta(p); }),
                  .otros = {{"the C runtime into fixed buffers", por_todas(rutas, corta_con_el_crt), 3.2},
                            {"four blocks of the C library alone", los_cuatro_bloques(rutas), 1.5},
                            {"std::filesystem::path", por_todas(rutas, corta_con_filesystem), 0.25}},
                  .vueltas = 50'000 / numero(rutas),
                  .elementos = numero(rutas)});
}

void compara_nombre(const std::string& clase, const rutas_w& rutas) {
    banco::corre(
        {.nombre = "name of a path (" + clase + ")",
         .nuestro = por_todas(rutas, [](const wchar_t* p) { libera(cdir_nombre_y_ext_fichero_UNICODE(p)); }),
         .otros = {{"a duplicate of the path",
                    por_todas(rutas, [](const wchar_t* p) { libera(widestr_nousar_copia(p, "bench", 1)); }),
                    1.6}},
         .vueltas = 50'000 / numero(rutas),
         .elementos = numero(rutas)});
}

void une_con_wstring(const wchar_t* izquierda, const wchar_t* derecha) {
    std::wstring p(izquierda);
    if (!p.empty() && p.back() != L'\\' && p.back() != L'/') {
        p += L'\\';
    }
    p += derecha;
    banco::usa(p.c_str());
}

void compara_union(const std::string& clase, const rutas_w& rutas) {
    static const wchar_t* const derecha = L"Images\\Ground floor\\photo0001.png";
    banco::corre(
        {.nombre = "join two paths (" + clase + ")",
         .nuestro = por_todas(
             rutas, [](const wchar_t* p) { libera(cdir_concatena_directorios_UNICODE(p, derecha)); }),
         .otros = {{"the same in std::wstring",
                    por_todas(rutas, [](const wchar_t* p) { une_con_wstring(p, derecha); }), 0.65},
                   {"std::filesystem::path operator/",
                    por_todas(rutas,
                              [](const wchar_t* p) {
                                  const std::filesystem::path entera = std::filesystem::path(p) / derecha;
                                  banco::usa(entera.c_str());
                              }),
                    0.15}},
         .vueltas = 50'000 / numero(rutas),
         .elementos = numero(rutas)});
}

// A block of the size of each path, taken and given back.
void compara_memoria(const rutas_w& rutas) {
    static std::atomic<unsigned long long> censo{0};
    const auto bytes = [](const wchar_t* p) { return (std::wcslen(p) + 1) * sizeof(wchar_t); };
    banco::corre({.nombre = "a block of tracked memory",
                  .nuestro = por_todas(rutas,
                                       [bytes](const wchar_t* p) {
                                           void* bloque = lumospy_nousar_malloc(bytes(p));
                                           banco::usa(bloque);
                                           lumospy_nousar_free_pp(&bloque);
                                       }),
                  .otros = {{"one of the C library, with an atomic count",
                             por_todas(rutas,
                                       [bytes](const wchar_t* p) {
                                           void* bloque = std::malloc(bytes(p));
                                           censo.fetch_add(1, std::memory_order_relaxed);
                                           banco::usa(bloque);
                                           std::free(bloque);
                                           censo.fetch_sub(1, std::memory_order_relaxed);
                                       }),
                             1.1}},
                  .vueltas = 50'000 / numero(rutas),
                  .elementos = numero(rutas)});
}

// Words of the script that a code page was made for, among them characters whose second byte is a separator's or a bar's.
rutas_w palabras_de_la_pagina() {
    switch (::GetACP()) {
        case 932:
            return {L"予定", L"表",       L"ソフトウェア", L"会議資料", L"写真",
                    L"田中", L"東京支店", L"能力評価",     L"申請書",   L"十月"};
        case 936:
            return {L"我的文档", L"照片", L"项目", L"会议记录", L"北京",
                    L"财务报告", L"合同", L"儀",   L"乗客",     L"十月"};
        default:
            return {L"予定",   L"Übersicht", L"会议记录", L"Отчёты", L"사진",
                    L"Diseño", L"Straße",    L"Łódź",     L"รายงาน", L"Étages"};
    }
}

// The paths of the sample as a user of that script has them: every third name is a word of it, and so is the stem of the
// last one.
rutas_w rutas_con(const rutas_w& palabras, const rutas_w& rutas) {
    rutas_w todas;
    std::size_t n = 0;
    for (const std::wstring& ruta : rutas) {
        std::wstring otra;
        std::size_t i = ruta.starts_with(L"\\\\") ? ruta.find(L'\\', 2) + 1 : ruta.find(L'\\') + 1;
        for (otra = ruta.substr(0, i); i < ruta.size();) {
            const std::size_t fin = std::min(ruta.find_first_of(L"\\/", i), ruta.size());
            const bool es_la_ultima = fin == ruta.size();
            const std::size_t punto = es_la_ultima ? std::min(ruta.rfind(L'.'), fin) : fin;
            const bool cambia = (es_la_ultima && punto > i) || (n % 3 == 0 && ruta[i] != L'.');
            otra += cambia ? palabras[n % palabras.size()] + ruta.substr(punto, fin + 1 - punto)
                           : ruta.substr(i, fin + 1 - i);
            i = fin + 1;
            ++n;
        }
        todas.push_back(otra);
    }
    return todas;
}

// The same paths in both flavours: those of ASCII, or those that the code page holds of the others.
void compara_gemelas(const std::string& clase, const rutas_w& rutas, bool ascii) {
    rutas_w anchas;
    rutas_a cortas;
    for (const std::wstring& ruta : rutas) {
        const std::string corta_ruta = a_8_bits(ruta);
        if (es_ascii(ruta) == ascii && !corta_ruta.empty()) {
            anchas.push_back(ruta);
            cortas.push_back(corta_ruta);
        }
    }
    const auto fila = [&](const std::string& que, auto corta_gemela, auto ancha) {
        banco::corre({.nombre = que + " in 8 bits (" + clase + ")",
                      .nuestro = por_todas(cortas, corta_gemela),
                      .otros = {{"its wide function", por_todas(anchas, ancha), ascii ? 1.5 : 2.5}},
                      .vueltas = 50'000 / numero(anchas),
                      .elementos = numero(anchas)});
    };
    fila(
        "check a path", [](const char* p) { sumidero = cdir_path_valido(p, 0); },
        [](const wchar_t* p) { sumidero = cdir_path_valido_UNICODE(p, 0); });
    if (clase.starts_with("invalid")) {
        return;
    }
    fila(
        "split into four new strings", [](const char* p) { corta(p); }, [](const wchar_t* p) { corta(p); });
    fila(
        "name of a path", [](const char* p) { libera(cdir_nombre_y_ext_fichero(p)); },
        [](const wchar_t* p) { libera(cdir_nombre_y_ext_fichero_UNICODE(p)); });
    fila(
        "join two paths",
        [](const char* p) { libera(cdir_concatena_directorios(p, "Images\\photo0001.png")); },
        [](const wchar_t* p) { libera(cdir_concatena_directorios_UNICODE(p, L"Images\\photo0001.png")); });
    anchas = nombres_de(std::move(anchas));
    std::transform(anchas.begin(), anchas.end(), cortas.begin(), a_8_bits);
    fila(
        "check a base name", [](const char* p) { sumidero = cdir_nombre_base_valido(p); },
        [](const wchar_t* p) { sumidero = cdir_nombre_base_valido_UNICODE(const_cast<wchar_t*>(p)); });
    if (!ascii) {
        return;  // hardly any extension is not
    }
    anchas = extensiones_de(std::move(anchas));
    std::transform(anchas.begin(), anchas.end(), cortas.begin(), a_8_bits);
    fila(
        "check an extension", [](const char* p) { sumidero = cdir_extension_valida(p); },
        [](const wchar_t* p) { sumidero = cdir_extension_valida_UNICODE(p); });
}

}  // namespace

void bancos::rutas_de_la_pagina() {
    const std::string pagina = "code page " + std::to_string(::GetACP());
    compara_gemelas(pagina, rutas_con(palabras_de_la_pagina(), lee_muestra().at("mixed")), false);
    compara_gemelas("ASCII, " + pagina, lee_muestra().at("mixed"), true);
}

void bancos::rutas() {
    const std::map<std::string, rutas_w> muestra = lee_muestra();
    const rutas_w& mezcla = muestra.at("mixed");
    compara_comprobacion("mixed", mezcla, 1.3);
    compara_nombres("mixed", mezcla, 1.3);
    for (const auto& [clase, rutas] : invalidas_de(mezcla)) {
        compara_comprobacion(clase, rutas, 3.0);
        compara_gemelas(clase, rutas, true);
    }
    compara_corte("mixed", mezcla);
    compara_nombre("mixed", mezcla);
    compara_union("mixed", mezcla);
    compara_memoria(mezcla);
    compara_gemelas("ASCII", mezcla, true);
    compara_gemelas("accents", mezcla, false);
    for (const auto& [clase, rutas] : muestra) {
        if (clase == "mixed") {
            continue;
        }
        compara_comprobacion(clase, rutas, 2.0);
        compara_nombres(clase, rutas, 2.0);
        compara_corte(clase, rutas);
        compara_nombre(clase, rutas);
        compara_union(clase, rutas);
        if (clase != "accents") {
            compara_gemelas(clase, rutas, true);
        }
    }
}
