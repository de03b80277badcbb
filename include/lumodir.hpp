/**
 * @file lumodir.hpp
 * The whole library for C++17, in headers alone: owners that free themselves, views and paths as arguments, yes or
 * no with its reason, optional results, receivers that are function objects.
 *
 * It adds no cost but the copy that a caller asks for. A C function `cdir_x_UNICODE()` is `lumodir::cdir::x()`,
 * `timefich_x_u()` is `lumodir::timefich::x()`, `lumodir_x()` is `lumodir::x()`; their documentation is that of the C
 * function. UTF-16 throughout; 8-bit only where the library has nothing else. C lacks these: a walk of a tree that
 * leaves nothing out and tells what it could not read (recorre()), lumoreg::lee_ulong(), and the languages by name.
 * @code
 * lumodir::receptor_avisos warnings([](std::wstring_view text) { show(text); });
 * if (auto valid = lumodir::cdir::es_path_valido(path); !valid)
 *     show(valid.motivo);
 * for (std::wstring_view name : lumodir::cdir::lista_de_ficheros(directory, L"txt"))
 *     use(name);
 * for (const lumodir::entrada& entry : lumodir::recorre(directory))
 *     use(entry.ruta(), entry.bytes());
 * std::wstring base = lumodir::cdir::nombre_base_fichero(path);
 * @endcode
 */
#ifndef LUMODIR_LUMODIR_HPP
#define LUMODIR_LUMODIR_HPP

#include "cpp/anfitrion.hpp"
#include "cpp/base.hpp"
#include "cpp/fechas.hpp"
#include "cpp/ficheros.hpp"
#include "cpp/listas.hpp"
#include "cpp/recorrido.hpp"
#include "cpp/rutas.hpp"
#include "cpp/sistema.hpp"

#endif
