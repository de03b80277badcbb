// Files as the subcommands look at them: what is there, dates in words, what must never be deleted.
#pragma once

#include <optional>
#include <string>

#include "ordenes.hpp"

namespace mando {

enum class clase_de_entrada { ninguna, fichero, directorio };

clase_de_entrada que_hay_en(const std::wstring& ruta);
bool esta_protegido(const std::wstring& ruta);
bool es_enlace(const std::wstring& ruta);  // a junction or a symbolic link, as far as the entry shows it

// The system's text for an error code.
std::wstring texto_del_sistema(unsigned long codigo);

// Throws fallo when something there is missing.
void comprueba_existe(const std::wstring& ruta);

// Throws fallo for an empty path, the root of a drive or of a share, however they are written: nothing is
// deleted or renamed there.
void rechaza_raiz(const std::wstring& ruta);

// Asks unless --yes was given; throws fallo when the answer is no.
void confirma(const peticion& p, const std::wstring& que);

// ---- Dates: seconds since 1970, UTC ----

std::optional<long long> fecha_de(const std::wstring& ruta);
std::optional<long long> creacion_de(const std::wstring& ruta);

// "2024-05-01 12:30:00", on the wall clock of that day or in UTC; `separador` is ' ' or 'T'.
std::wstring fecha_en_palabras(long long segundos, bool en_utc, wchar_t separador = L' ');
// As above from seconds that are on the wall clock already.
std::wstring fecha_de_pared(long long segundos, wchar_t separador = L' ');

// now, @SECONDS, YYYY-MM-DD, YYYY-MM-DD HH:MM[:SS] (or with T), a final Z for UTC. Throws uso_incorrecto.
long long lee_fecha(const std::wstring& texto, bool en_utc);

// ---- The same action on each of several paths ----

// The action answers an empty text, or why it failed. Successes are told as "<done> <path>".
int en_cada_una(const peticion& p, const std::vector<std::wstring>& rutas, frase hecho_en_palabras,
                std::wstring (*accion)(const peticion&, const std::wstring&));

}  // namespace mando
