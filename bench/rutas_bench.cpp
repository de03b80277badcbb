// Path names: checking, splitting and joining against a bare scan, std::filesystem and std::wstring.
#include <filesystem>

#include "bancos.hpp"
#include "cdir.h"
#include "companions/widestr.h"

namespace {

const wchar_t* const ruta =
    L"C:\\Users\\Public\\Documents\\Projects\\Site2024\\Images\\Ground floor\\photo0001.png";

void libera(wchar_t* texto) {
    widestr_nousar_destruye(&texto, "bench", 1);
}

// Reads every unit once and keeps something of each.
unsigned recorre(const wchar_t* p) {
    unsigned suma = 0;
    for (; *p != 0; ++p) {
        suma += *p;
    }
    return suma;
}

// The pointer is read anew each time: the optimiser must not take the text for known.
const wchar_t* volatile texto_variable = ruta;

}  // namespace

void bancos::rutas() {
    volatile unsigned sumidero = 0;
    banco::corre({.nombre = "check a path of 76 units",
                  .nuestro = [&] { sumidero = cdir_path_valido_UNICODE(texto_variable, 0); },
                  .otros = {{"a bare scan of its units", [&] { sumidero = recorre(texto_variable); }, 3.0},
                            {"std::filesystem::path parsing it",
                             [&] {
                                 const std::filesystem::path p(texto_variable);
                                 sumidero = static_cast<unsigned>(std::distance(p.begin(), p.end()));
                             },
                             0.12}},
                  .vueltas = 20'000});
    banco::corre({.nombre = "split into four new strings",
                  .nuestro =
                      [&] {
                          wchar_t *unidad, *directorio, *nombre, *extension;
                          cdir_splitpath_con_comprobacion_UNICODE(texto_variable, &unidad, &directorio,
                                                                  &nombre, &extension);
                          libera(unidad);
                          libera(directorio);
                          libera(nombre);
                          libera(extension);
                      },
                  .otros = {{"std::filesystem::path",
                             [&] {
                                 const std::filesystem::path p(texto_variable);
                                 const std::wstring unidad = p.root_name().wstring();
                                 const std::wstring directorio = p.parent_path().wstring();
                                 const std::wstring nombre = p.stem().wstring();
                                 const std::wstring extension = p.extension().wstring();
                                 sumidero = static_cast<unsigned>(unidad.size() + directorio.size() +
                                                                  nombre.size() + extension.size());
                             },
                             0.35}},
                  .vueltas = 10'000});
    static const wchar_t* volatile izquierda = L"C:\\Users\\Public\\Documents\\Projects\\Site2024";
    static const wchar_t* volatile derecha = L"Images\\Ground floor\\photo0001.png";
    banco::corre({.nombre = "join two paths",
                  .nuestro = [&] { libera(cdir_concatena_directorios_UNICODE(izquierda, derecha)); },
                  .otros = {{"std::filesystem::path operator/",
                             [&] {
                                 const std::filesystem::path p = std::filesystem::path(izquierda) / derecha;
                                 banco::usa(p.c_str());
                             },
                             0.15},
                            {"the same in std::wstring",
                             [&] {
                                 std::wstring p(izquierda);
                                 if (!p.empty() && p.back() != L'\\' && p.back() != L'/') {
                                     p += L'\\';
                                 }
                                 p += derecha;
                                 banco::usa(p.c_str());
                             },
                             1.3}},
                  .vueltas = 20'000});
}
