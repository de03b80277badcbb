// lumodir.exe: the library's services for a person at a terminal and for scripts. A host of lumodir.dll that
// knows its public headers only.
//
// Promises: exit code 0 done or yes, 1 no, invalid, not found, not done, or an answer that cannot be written, 2 wrong
// command line, and that of Windows for Ctrl-C after Ctrl-C; with --json standard output holds one JSON value, also when
// the answer is a failure or the command line wrong; nothing else is written there. Help is words in any case.
// Checked by tests/cli.
#include <algorithm>
#include <exception>

#include "anfitrion.hpp"
#include "ayuda.hpp"
#include "consola.hpp"
#include "ficheros.hpp"
#include "linea_de_ordenes.hpp"
#include "respuesta.hpp"
#include "sistema_windows.hpp"
// After windows.h
#include <shellapi.h>
#include "textos.hpp"
#include "trabajo.hpp"

namespace mando {

namespace {

// The wide command line as it was given: the runtime's own arguments have lost what the code page lacks, and
// may have had their wildcards expanded.
std::vector<std::wstring> i_palabras() {
    int cuantas = 0;
    wchar_t** lista = CommandLineToArgvW(GetCommandLineW(), &cuantas);
    std::vector<std::wstring> palabras(lista + (cuantas > 0 ? 1 : 0), lista + cuantas);
    LocalFree(lista);
    return palabras;
}

int i_mal_uso(const uso_incorrecto& uso, const orden* cual, bool en_json) {
    if (en_json) {
        json todo = json::objeto().pon("error", uso.texto);
        if (cual) {
            todo.pon("usage", uso_de(*cual));
        }
        escribe_json(todo);
    }
    di_queja(uso.texto);
    if (cual) {
        di_uso(errores(), *cual);
        errores().linea(di("Try 'lumodir %1'.", ancho_de(cual->nombre) + L" --help"));
    } else {
        errores().linea(di("Try 'lumodir %1'.", L"--help"));
    }
    return mal_uso;
}

int i_fallo(const fallo& que, const peticion& p) {
    if (p.en_json) {
        json todo = json::objeto().pon("error", que.texto);
        const std::vector<std::wstring> avisos = toma_avisos();
        if (!avisos.empty()) {
            todo.pon("messages", avisos);
        }
        escribe_json(todo);
    } else {
        di_queja(que.texto);
    }
    return no;
}

void i_elige_idioma(const std::wstring& nombre, bool en_palabras) {
    const std::optional<lumodir::idioma> cual = busca_idioma(nombre);
    if (!cual) {
        throw uso_incorrecto{
            di("unknown language '%1'; known are %2, their English names, and numbers from 0 to 40", nombre,
               nombres_de_idiomas())};
    }
    lumodir::establece_idioma(*cual);
    const lumodir::idioma de_los_textos = idioma_de_los_textos(*cual);
    if (de_los_textos != *cual) {
        di_queja(
            di("there are no texts in '%1'; those in %2 are used", nombre, nombre_de_idioma(de_los_textos)),
            estilo::aviso);
    }
    // Scripts get nothing that is translated but messages.
    if (en_palabras && !en_la_lengua_de_los_mensajes()) {
        di_queja(di("the library speaks '%1'; the command's own words are in English", nombre),
                 estilo::aviso);
    }
}

void i_comprueba_argumentos(const peticion& p) {
    const orden& cual = *p.cual;
    if (p.argumentos.size() < cual.minimo) {
        throw uso_incorrecto{cual.minimo - p.argumentos.size() == 1 ? di("an argument is missing")
                                                                    : di("arguments are missing")};
    }
    if (p.argumentos.size() > cual.maximo) {
        throw uso_incorrecto{di("unexpected argument: '%1'", p.argumentos[cual.maximo])};
    }
}

void i_ayuda(corriente& donde, const invocacion& leida) {
    if (leida.que.cual) {
        ayuda_de_orden(donde, *leida.que.cual);
    } else if (!leida.grupo_a_medias.empty()) {
        ayuda_de_familia(donde, leida.grupo_a_medias);
    } else {
        ayuda_general(donde);
    }
}

int i_ejecuta(invocacion& leida) {
    if (leida.version) {
        return responde(leida.que, json::objeto().pon("version", LUMODIR_VERSION),
                        [] { di_version(salida()); });
    }
    if (leida.ayuda) {
        i_ayuda(salida(), leida);
        return hecho;
    }
    if (!leida.que.cual) {
        if (leida.que.en_json) {
            escribe_json(json::objeto().pon("error", di("a command is missing")));
        }
        i_ayuda(errores(), leida);
        return mal_uso;
    }
    const anfitrion de_la_biblioteca(leida.verboso);
    atiende_interrupciones();
    if (leida.idioma) {
        i_elige_idioma(*leida.idioma, !leida.que.en_json);
    }
    i_comprueba_argumentos(leida.que);
    return leida.que.cual->ejecuta(leida.que);
}

// What is said about the command line itself is said in the language that it names, wherever that stands.
void i_adelanta_idioma(const std::vector<std::wstring>& palabras) {
    constexpr std::wstring_view opcion_larga = L"--lang", con_valor = L"--lang=";
    for (size_t i = 0; i < palabras.size(); ++i) {
        std::optional<lumodir::idioma> cual;
        if (palabras[i].starts_with(con_valor)) {
            cual = busca_idioma(palabras[i].substr(con_valor.size()));
        } else if (palabras[i] == opcion_larga && i + 1 < palabras.size()) {
            cual = busca_idioma(palabras[i + 1]);
        }
        if (cual) {
            lumodir::establece_idioma(*cual);
        }
    }
}

// Whether a wrong command line asks for JSON, wherever that stands.
bool i_pide_json(const std::vector<std::wstring>& palabras) {
    const auto fin = std::find(palabras.begin(), palabras.end(), L"--");
    return std::find(palabras.begin(), fin, L"--json") != fin;
}

int i_principal() {
    invocacion leida;
    std::vector<std::wstring> palabras;
    // No box of the system's ("there is no disk in the drive") ever waits for an answer.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    try {
        palabras = i_palabras();
        i_adelanta_idioma(palabras);
        lee_linea_de_ordenes(palabras, leida);
        return i_ejecuta(leida);
    } catch (const uso_incorrecto& uso) {
        return i_mal_uso(uso, leida.que.cual, i_pide_json(palabras));
    } catch (const fallo& que) {
        return i_fallo(que, leida.que);
    } catch (const std::exception& otra) {
        di_queja(di("unexpected failure: %1", de_utf8(otra.what())));
        return no;
    }
}

// Who has stopped reading, as a program that shows the first lines only, needs not be told.
bool i_nadie_lee(unsigned long error) {
    return error == ERROR_NO_DATA || error == ERROR_BROKEN_PIPE || error == ERROR_PIPE_NOT_CONNECTED;
}

int i_acaba(int codigo_de_salida) {
    progreso().borra();
    salida().cierra();
    if (const unsigned long error = salida().error(); error != 0) {
        if (!i_nadie_lee(error)) {
            di_queja(di("cannot write standard output: %1", texto_del_sistema(error)));
        }
        codigo_de_salida = codigo_de_salida == hecho ? no : codigo_de_salida;
    }
    errores().cierra();
    return interrumpido() ? acabado_por_control_c : codigo_de_salida;
}

}  // namespace

}  // namespace mando

int main() {
    try {
        return mando::i_acaba(mando::i_principal());
    } catch (...) {
        return mando::no;  // no memory left even to say so
    }
}
