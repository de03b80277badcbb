// What the subcommands ask about files: what is there, its dates in words, what must never be deleted.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ordenes.hpp"

namespace mando {

enum class clase_de_entrada { ninguna, fichero, directorio };

clase_de_entrada que_hay_en(const std::wstring& ruta);
bool esta_protegido(const std::wstring& ruta);
bool es_enlace(const std::wstring& ruta);  // a junction or a symbolic link

// The system's text for an error code, in the language of the command's own words.
std::wstring texto_del_sistema(unsigned long codigo);

// Throws fallo when nothing is there.
void comprueba_existe(const std::wstring& ruta);

// Throws fallo for an empty path and for the root of a drive or of a share, however it is written: nothing may be
// deleted or renamed there.
void rechaza_raiz(const std::wstring& ruta);

// Asks unless --yes was given; throws fallo when the answer is no.
void confirma(const peticion& p, const std::wstring& que);

// ---- Dates: seconds since 1970, UTC ----

std::optional<long long> fecha_de(const std::wstring& ruta);
std::optional<long long> creacion_de(const std::wstring& ruta);

// "2024-05-01 12:30:00", in local time or in UTC; `separador` is ' ' or 'T'.
std::wstring fecha_en_palabras(long long segundos, bool en_utc, wchar_t separador = L' ');
// The same from seconds that are in local time already.
std::wstring fecha_de_pared(long long segundos, wchar_t separador = L' ');

// Reads now, @SECONDS, YYYY-MM-DD or YYYY-MM-DD HH:MM[:SS] (or with T), with a final Z for UTC. Throws uso_incorrecto.
long long lee_fecha(const std::wstring& texto, bool en_utc);

// ---- The same action on each of several paths ----

// What came of it for one path.
struct resultado {
    std::wstring queja;  // why it failed; empty when it is done
    std::wstring ruta;   // what it was done to, when that is not the path that was given
    bool ya_estaba = false;
    bool se_crea = false;   // --dry-run: it is missing and would be created
    bool ya_dicho = false;  // the library has told the person why
    resultado() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): a complaint is a result.
    resultado(std::wstring que) : queja(std::move(que)) {}
};

// How it is told: "deleted a.txt", "would delete a.txt".
struct acto {
    frase hecho, se_haria;
    frase ya_estaba = {};
};

// With --dry-run the action only checks whether it could begin. Ctrl-C stops before the next path.
int en_cada_una(const peticion& p, const std::vector<std::wstring>& rutas, const acto& que,
                resultado (*accion)(const peticion&, const std::wstring&));

// Calls a function with each of several paths, under a progress line.
void con_cada_ruta(const std::vector<std::wstring>& rutas,
                   const std::function<void(const std::wstring&)>& funcion);

// The progress line over work on paths one after another.
std::wstring por_donde_va(size_t vistas, const std::vector<std::wstring>& rutas, unsigned segundos);

// Adds to a complaint which programs hold the file, if the system tells.
std::wstring con_ocupantes(const std::wstring& queja, const std::wstring& ruta);

}  // namespace mando
