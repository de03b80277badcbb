// Files: exists, test, size, date, touch, mkdir, mv, protect, unprotect, rename-ext.
#include <algorithm>

#include "anfitrion.hpp"
#include "cdir_ficheros.h"
#include "cdir_listas.h"
#include "cdir_rutas.h"
#include "companions/lmlongpath.h"
#include "consola.hpp"
#include "directorios.hpp"
#include "ficheros.hpp"
#include "lumodir.h"
#include "ordenes.hpp"
#include "sistema_windows.hpp"
#include "tabla.hpp"
#include "textos.hpp"
#include "timefich.h"
#include "trabajo.hpp"

namespace mando {

namespace {

// ---- exists ----

clase_de_entrada i_halla(const std::wstring& ruta) {
    if (ruta.find_first_of(L"*?") == ruta.npos) {
        return que_hay_en(ruta);
    }
    return cdir_existe_fichero_filtro_UNICODE(ruta.c_str()) == CIERTO       ? clase_de_entrada::fichero
           : cdir_existe_directorio_filtro(ruta.c_str(), nullptr) == CIERTO ? clase_de_entrada::directorio
                                                                            : clase_de_entrada::ninguna;
}

frase i_en_palabras(clase_de_entrada clase) {
    return clase == clase_de_entrada::fichero      ? frase("file")
           : clase == clase_de_entrada::directorio ? frase("directory")
                                                   : frase("missing");
}

int i_exists(peticion& p) {
    json lista = json::lista();
    bool todas = true;
    for (const std::wstring& ruta : p.argumentos_o_entrada()) {
        const clase_de_entrada clase = i_halla(ruta);
        const bool vale = clase != clase_de_entrada::ninguna &&
                          (!p.tiene("file") || clase == clase_de_entrada::fichero) &&
                          (!p.tiene("dir") || clase == clase_de_entrada::directorio);
        todas = todas && vale;
        if (p.en_json) {
            lista.agrega(json::objeto()
                             .pon("path", ruta)
                             .pon("exists", clase != clase_de_entrada::ninguna)
                             .pon("kind", i_en_palabras(clase).ingles()));
        } else {
            salida()
                .escribe(a_la_izquierda(di(i_en_palabras(clase)), 11), vale ? estilo::bueno : estilo::malo)
                .linea(std::wstring_view(ruta));
        }
    }
    if (p.en_json) {
        escribe_json(lista);
    }
    return todas ? hecho : no;
}

// ---- test ----

struct acceso {
    bool leer = false, escribir = false;
    std::wstring por_que_no;
};

acceso i_acceso(const std::wstring& ruta, bool es_directorio) {
    acceso a;
    wchar_t* motivo = nullptr;
    if (es_directorio) {
        try {
            comprueba_directorio(ruta);
            a.leer = true;
        } catch (const fallo&) {
            a.leer = false;
        }
        a.escribir = cdir_se_puede_escribir_en_directorio(ruta.c_str(), &motivo) == CIERTO;
    } else {
        a.leer = cdir_se_puede_leer_UNICODE(ruta.c_str()) == CIERTO;
        a.escribir = lumodir_se_puede_escribir_UNICODE_ex(ruta.c_str(), &motivo) == CIERTO;
    }
    a.por_que_no = toma(motivo);
    return a;
}

int i_test(peticion& p) {
    const std::wstring& ruta = p.argumentos[0];
    comprueba_existe(ruta);
    const bool es_directorio = que_hay_en(ruta) == clase_de_entrada::directorio;
    const acceso a = i_acceso(ruta, es_directorio);
    if (p.en_json) {
        json fila = json::objeto()
                        .pon("path", ruta)
                        .pon("kind", es_directorio ? "directory" : "file")
                        .pon("readable", a.leer)
                        .pon("writable", a.escribir)
                        .pon("protected", esta_protegido(ruta));
        if (!a.por_que_no.empty()) {
            fila.pon("reason", a.por_que_no);
        }
        escribe_json(fila);
    } else {
        const auto si_o_no = [](bool si) {
            return celda(di(si ? frase("yes") : frase("no")), si ? estilo::bueno : estilo::malo);
        };
        celda escribible = si_o_no(a.escribir);
        escribible.texto += a.por_que_no.empty() ? L"" : L": " + a.por_que_no;
        pinta_ficha(salida(), {{"kind", di(es_directorio ? frase("directory") : frase("file"))},
                               {"readable", si_o_no(a.leer)},
                               {"writable", escribible},
                               {"protected", di(esta_protegido(ruta) ? frase("yes") : frase("no"))}});
    }
    const bool pide_todo = !p.tiene("read") && !p.tiene("write");
    const bool vale =
        (a.leer || !(pide_todo || p.tiene("read"))) && (a.escribir || !(pide_todo || p.tiene("write")));
    return vale ? hecho : no;
}

// ---- size and date ----

int i_size(peticion& p) {
    json lista = json::lista();
    tabla t({{"bytes", true}, {"size", true}, {"path", false, true}});
    unsigned long long total = 0;
    bool todas = true;
    const std::vector<std::wstring> rutas = p.argumentos_o_entrada();
    for (const std::wstring& ruta : rutas) {
        unsigned long codigo = 0;
        const bool es_directorio = que_hay_en(ruta) == clase_de_entrada::directorio;
        const unsigned long long bytes =
            es_directorio ? ~0ull : lumodir_get_tamanyo_fichero(ruta.c_str(), &codigo);
        if (bytes == ~0ull) {
            todas = false;
            const std::wstring queja = es_directorio ? di("is a directory") : texto_del_sistema(codigo);
            p.en_json
                ? lista.agrega(json::objeto().pon("path", ruta).pon("size", json()).pon("error", queja)),
                void()
                : void(errores()
                           .escribe("lumodir: ", estilo::malo)
                           .escribe(ruta)
                           .escribe(": ")
                           .linea(std::wstring_view(queja)));
            continue;
        }
        total += bytes;
        if (p.en_json) {
            lista.agrega(json::objeto().pon("path", ruta).pon("size", bytes));
        } else {
            t.fila({con_miles(bytes), tamanyo_legible(bytes), ruta});
        }
    }
    if (p.en_json) {
        escribe_json(lista);
    } else if (!t.vacia()) {
        if (rutas.size() > 1) {
            t.fila({celda(con_miles(total), estilo::titulo), celda(tamanyo_legible(total), estilo::titulo),
                    celda(di("total"), estilo::titulo)});
        }
        t.pinta(salida());
    }
    return todas ? hecho : no;
}

int i_date(peticion& p) {
    const bool en_utc = p.tiene("utc");
    json lista = json::lista();
    tabla t({{"modified"}, {"created"}, {"path", false, true}});
    bool todas = true;
    for (const std::wstring& ruta : p.argumentos_o_entrada()) {
        const std::optional<long long> modificado = fecha_de(ruta), creado = creacion_de(ruta);
        if (!modificado || !creado) {
            todas = false;
            p.en_json
                ? lista.agrega(
                      json::objeto().pon("path", ruta).pon("error", di("'%1' does not exist", ruta))),
                void()
                : void(errores().escribe("lumodir: ", estilo::malo).linea(di("'%1' does not exist", ruta)));
        } else if (p.en_json) {
            lista.agrega(json::objeto()
                             .pon("path", ruta)
                             .pon("modified", fecha_en_palabras(*modificado, en_utc, L'T'))
                             .pon("modified_seconds", *modificado)
                             .pon("created", fecha_en_palabras(*creado, en_utc, L'T'))
                             .pon("created_seconds", *creado));
        } else {
            t.fila({fecha_en_palabras(*modificado, en_utc), fecha_en_palabras(*creado, en_utc), ruta});
        }
    }
    if (p.en_json) {
        escribe_json(lista);
    } else if (!t.vacia()) {
        t.pinta(salida());
    }
    return todas ? hecho : no;
}

// ---- touch ----

std::wstring i_crea_vacio(const std::wstring& ruta) {
    const std::wstring para_el_sistema = toma(lmlongpath_prepended_path_si_necesario(ruta.c_str()));
    void* asa = CreateFileW(para_el_sistema.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
    if (asa == INVALID_HANDLE_VALUE) {
        return di("cannot create '%1': %2", ruta, texto_del_sistema(GetLastError()));
    }
    CloseHandle(asa);
    return {};
}

std::wstring i_touch_una(const peticion& p, const std::wstring& ruta) {
    long long fecha = lee_fecha(p.tiene("date") ? p.valor("date") : L"now", p.tiene("utc"));
    if (p.tiene("like")) {
        comprueba_existe(p.valor("like"));
        fecha = fecha_de(p.valor("like")).value_or(fecha);
    }
    const clase_de_entrada clase = que_hay_en(ruta);
    if (clase == clase_de_entrada::directorio) {
        return di("'%1' is a directory", ruta);
    }
    if (clase == clase_de_entrada::ninguna) {
        const std::wstring queja =
            p.tiene("no-create") ? di("'%1' does not exist", ruta) : i_crea_vacio(ruta);
        if (!queja.empty()) {
            return queja;
        }
    }
    return timefich_asignar_fecha_fichero_UTC(ruta.c_str(), fecha) == CIERTO
               ? std::wstring()
               : di("the date of '%1' is not set", ruta);
}

int i_touch(peticion& p) {
    if (p.tiene("date") && p.tiene("like")) {
        throw uso_incorrecto{di("give either --date or --like")};
    }
    return en_cada_una(p, p.argumentos_o_entrada(), "dated", i_touch_una);
}

// ---- mkdir, mv ----

std::wstring i_mkdir_una(const peticion& p, const std::wstring& ruta) {
    if (sin_blancos(ruta).empty()) {
        return di("the path is empty");
    }
    // No attempt and no question would make a directory of it.
    if (!p.tiene("for-file") && que_hay_en(ruta) == clase_de_entrada::fichero) {
        return di("'%1' is a file", ruta);
    }
    const auto crea = p.tiene("for-file")
                          ? (p.tiene("if-possible") ? cdir_crea_directorios_fichero_si_es_posible_UNICODE
                                                    : cdir_crea_directorios_fichero_UNICODE)
                      : p.tiene("if-possible") ? cdir_crea_directorios_si_es_posible_UNICODE
                                               : cdir_crea_directorios_del_path_UNICODE;
    return crea(ruta.c_str()) == CIERTO ? std::wstring() : di("'%1' is not created", ruta);
}

int i_mkdir(peticion& p) {
    return en_cada_una(p, p.argumentos_o_entrada(), "created", i_mkdir_una);
}

int i_mv(peticion& p) {
    const std::wstring& viejo = p.argumentos[0];
    std::wstring nuevo = p.argumentos[1];
    if (sin_blancos(viejo).empty() || sin_blancos(nuevo).empty()) {
        throw fallo{di("the path is empty: refused, nothing is done")};
    }
    comprueba_existe(viejo);
    if (que_hay_en(nuevo) == clase_de_entrada::directorio) {
        nuevo = toma(cdir_concatena_directorios_UNICODE(
            nuevo.c_str(), toma(cdir_nombre_y_ext_fichero_UNICODE(viejo.c_str())).c_str()));
    }
    // Another letter case of the same name is a new name for the same file.
    if (que_hay_en(nuevo) != clase_de_entrada::ninguna && !iguales_sin_caja(viejo, nuevo)) {
        throw fallo{di("'%1' exists already and is never replaced", nuevo)};
    }
    bool movido;
    if (p.tiene("if-possible")) {
        movido = cdir_mueve_fichero(viejo.c_str(), nuevo.c_str()) == CIERTO;
    } else {
        // This one retries and asks, but gives no answer: a move that went through has said nothing.
        cdir_renombra_fichero_UNICODE(viejo.c_str(), nuevo.c_str());
        movido = que_hay_en(nuevo) != clase_de_entrada::ninguna && !hubo_quejas();
    }
    if (!movido) {
        throw fallo{di("'%1' is not moved", viejo)};
    }
    if (p.en_json) {
        escribe_json(json::objeto().pon("from", viejo).pon("to", nuevo).pon("done", true));
    } else {
        salida().escribe(di("moved"), estilo::bueno).linea(di(" %1 to %2", viejo, nuevo));
    }
    return hecho;
}

// ---- protect, unprotect ----

template <bool proteger>
std::wstring i_protege_una(const peticion&, const std::wstring& ruta) {
    comprueba_existe(ruta);
    proteger ? lumodir_protege_fichero_UNICODE(ruta.c_str())
             : lumodir_desprotege_fichero_UNICODE(ruta.c_str());
    return esta_protegido(ruta) == proteger
               ? std::wstring()
               : di(proteger ? frase("'%1' is not protected") : frase("'%1' is still protected"), ruta);
}

int i_protect(peticion& p) {
    return en_cada_una(p, p.argumentos_o_entrada(), "protected", i_protege_una<true>);
}
int i_unprotect(peticion& p) {
    return en_cada_una(p, p.argumentos_o_entrada(), "unprotected", i_protege_una<false>);
}

// ---- rename-ext ----

std::wstring i_extension_de(const std::wstring& argumento) {
    const std::wstring extension = argumento.starts_with(L'.') ? argumento.substr(1) : argumento;
    if (extension.find_first_of(L"*?") != extension.npos ||
        cdir_extension_valida_UNICODE(extension.c_str()) != CIERTO) {
        throw uso_incorrecto{di("'%1' is no extension", argumento)};
    }
    return extension;
}

std::vector<std::wstring> i_con_extension(const std::wstring& directorio, const std::wstring& extension) {
    ListaFicheros_u lista{};
    cdir_lista_de_ficheros_UNICODE(directorio.c_str(), extension.c_str(), &lista);
    std::vector<std::wstring> nombres(lista.lista, lista.lista + lista.num);
    cdir_libera_lista_de_ficheros_UNICODE(&lista);
    return nombres;
}

int i_rename_ext(peticion& p) {
    const std::wstring directorio = p.argumentos[0];
    const std::wstring vieja = i_extension_de(p.argumentos[1]), nueva = i_extension_de(p.argumentos[2]);
    rechaza_raiz(directorio);
    comprueba_directorio(directorio);
    const std::vector<std::wstring> nombres = i_con_extension(directorio, vieja);
    size_t pisados = 0;
    for (const std::wstring& nombre : nombres) {
        const std::wstring otro = toma(cdir_nombre_fichero_con_ext_UNICODE(nombre.c_str(), nueva.c_str()));
        const std::wstring ruta = toma(cdir_concatena_directorios_UNICODE(directorio.c_str(), otro.c_str()));
        pisados += !iguales_sin_caja(otro, nombre) && que_hay_en(ruta) != clase_de_entrada::ninguna ? 1 : 0;
    }
    if (nombres.empty()) {
        throw fallo{di("no file in '%1' has the extension '%2'", directorio, vieja)};
    }
    const std::wstring cuantos = plural(nombres.size(), "file", "files");
    confirma(p, pisados == 0
                    ? di("Rename %1 in '%2' from '.%3' to '.%4'?", cuantos, directorio, vieja, nueva)
                    : di("Rename %1 in '%2' from '.%3' to '.%4', deleting %5 that bear the new name?",
                         cuantos, directorio, vieja, nueva, plural(pisados, "file", "files")));
    con_progreso(
        [&] { cdir_cambia_extension_ficheros_u(directorio.c_str(), vieja.c_str(), nueva.c_str()); },
        [&](unsigned segundos) { return di("renaming %1, %2 s", cuantos, std::to_wstring(segundos)); });
    const size_t quedan = iguales_sin_caja(vieja, nueva) ? 0 : i_con_extension(directorio, vieja).size();
    if (p.en_json) {
        escribe_json(json::objeto()
                         .pon("directory", directorio)
                         .pon("renamed", nombres.size() - quedan)
                         .pon("replaced", pisados)
                         .pon("left", quedan));
    } else {
        salida()
            .escribe(di("renamed"), estilo::bueno)
            .linea(L" " + plural(nombres.size() - quedan, "file", "files"));
    }
    if (quedan > 0 && !p.en_json) {
        throw fallo{di("%1 could not be renamed", plural(quedan, "file", "files"))};
    }
    return quedan > 0 ? no : hecho;
}

// ---- The rows ----

constexpr opcion opciones_exists[] = {{"file", "", "it has to be a file"},
                                      {"dir", "", "it has to be a directory"}};
constexpr ejemplo ejemplos_exists[] = {
    {R"(exists C:\windows\win.ini C:\nothing)", "file, missing; exit code 1"},
    {R"(exists "C:\windows\*.ini")", "whether any file matches"},
};
constexpr opcion opciones_test[] = {{"read", "", "the exit code is about reading only"},
                                    {"write", "", "the exit code is about writing only"}};
constexpr ejemplo ejemplos_test[] = {
    {R"(test C:\data\report.txt --write)", "can this program alone write it, and if not, why"}};
constexpr ejemplo ejemplos_size[] = {
    {R"(size C:\windows\win.ini C:\windows\system.ini)", "each, and the total"}};
constexpr opcion opciones_date[] = {{"utc", "", "in UTC instead of the wall clock here"}};
constexpr ejemplo ejemplos_date[] = {{R"(date C:\windows\win.ini)", "when it was modified and created"}};
constexpr opcion opciones_touch[] = {
    {"date", "D",
     "now (the default), 2024-05-01, \"2024-05-01 12:30[:00]\", a final Z for\nUTC, or @SECONDS since 1970 "
     "in UTC"},
    {"like", "FILE", "the date of another file"},
    {"utc", "", "the date is in UTC"},
    {"no-create", "", "do not create a missing file"},
};
constexpr ejemplo ejemplos_touch[] = {
    {R"(touch report.txt --date "2024-05-01 12:30")", "on the wall clock here"}};
constexpr opcion opciones_mkdir[] = {
    {"for-file", "", "the paths name files whose directories are wanted"},
    {"if-possible", "", "without a message of the library and without asking"},
};
constexpr ejemplo ejemplos_mkdir[] = {{R"(mkdir C:\data\2024\may)", "every missing level"},
                                      {R"(mkdir --for-file C:\data\2024\may\1.txt)", "the same directories"}};
constexpr opcion opciones_mv[] = {{"if-possible", "", "one attempt, without retries and without asking"}};
constexpr ejemplo ejemplos_mv[] = {{R"(mv draft.txt C:\data\final.txt)", "rename and move"},
                                   {R"(mv draft.txt C:\data)", "into a directory"}};
constexpr ejemplo ejemplos_protect[] = {{"protect report.txt", "make it read-only"}};
constexpr ejemplo ejemplos_unprotect[] = {{"unprotect report.txt", "make it writable"}};
constexpr ejemplo ejemplos_rename_ext[] = {
    {R"(rename-ext C:\data tmp bak)", "every .tmp there becomes .bak"}};

constexpr orden ordenes[] = {
    {"exists", "PATH...", "tell whether files or directories exist",
     "A path may have * and ? in its last component: is there anything that matches?", 1, cuantos_sean,
     opciones_exists, ejemplos_exists, i_exists},
    {"test", "PATH", "can it be read and written, and if not, why",
     "A file is writable when this program can open it alone; a directory when a file\n"
     "can be created in it, which is tried.",
     1, 1, opciones_test, ejemplos_test, i_test},
    {"size", "PATH...", "sizes of files", "", 1, cuantos_sean, {}, ejemplos_size, i_size},
    {"date", "PATH...", "when files were modified and created", "", 1, cuantos_sean, opciones_date,
     ejemplos_date, i_date},
    {"touch", "FILE... [--date D]", "set the date of files, creating missing ones", "", 1, cuantos_sean,
     opciones_touch, ejemplos_touch, i_touch},
    {"mkdir", "DIR...", "create directories with their missing parents",
     "A level that cannot be created is tried again for a moment; on a terminal you\n"
     "are then asked.",
     1, cuantos_sean, opciones_mkdir, ejemplos_mkdir, i_mkdir},
    {"mv", "OLD NEW", "rename or move a file; nothing is ever replaced",
     "A file held open by another program is tried again for a moment; on a terminal\n"
     "you are then asked.",
     2, 2, opciones_mv, ejemplos_mv, i_mv},
    {"protect", "FILE...", "make files read-only", "", 1, cuantos_sean, {}, ejemplos_protect, i_protect},
    {"unprotect", "FILE...", "make files writable", "", 1, cuantos_sean, {}, ejemplos_unprotect, i_unprotect},
    {"rename-ext",
     "DIR OLD NEW",
     "give all files with one extension another",
     "A file that already has a new name is deleted for it: you are told how many\n"
     "before anything is done. Drive roots are refused.",
     3,
     3,
     {},
     ejemplos_rename_ext,
     i_rename_ext},
};

}  // namespace

const std::span<const orden> ordenes_ficheros = ordenes;

}  // namespace mando
