// Files: exists, test, size, date, touch, mkdir, mv, protect, unprotect, rename-ext, who.
#include <algorithm>
#include <atomic>

#include "anfitrion.hpp"
#include "cdir_ficheros.h"
#include "cdir_listas.h"
#include "cdir_rutas.h"
#include "comodines.hpp"
#include "companions/lmlongpath.h"
#include "consola.hpp"
#include "directorios.hpp"
#include "ficheros.hpp"
#include "lumodir.h"
#include "ocupantes.hpp"
#include "ordenes.hpp"
#include "sistema_windows.hpp"
#include "tabla.hpp"
#include "textos.hpp"
#include "timefich.h"
#include "trabajo.hpp"

namespace mando {

namespace {

// ---- exists ----

frase i_en_palabras(clase_de_entrada clase) {
    return clase == clase_de_entrada::fichero      ? frase("file")
           : clase == clase_de_entrada::directorio ? frase("directory")
                                                   : frase("missing");
}

// A pattern is there when anything matches it: it gives way to what it matches, and stays to be told as missing.
std::vector<std::wstring> i_existentes(const peticion& p) {
    std::vector<std::wstring> rutas;
    for (const std::wstring& ruta : p.argumentos_o_entrada()) {
        std::vector<std::wstring> halladas;
        if (es_patron(ruta)) {
            try {
                halladas = expande(ruta, p.tiene("file") ? que_valen::ficheros : que_valen::todo);
            } catch (const fallo&) {
                halladas.clear();  // its directory is missing
            }
        }
        if (halladas.empty()) {
            halladas.push_back(ruta);
        }
        rutas.insert(rutas.end(), halladas.begin(), halladas.end());
    }
    return rutas;
}

int i_exists(peticion& p) {
    constexpr size_t separacion = 2;
    const size_t ancho = columnas_de(di("directory")) + separacion;
    json lista = json::lista();
    bool todas = true;
    for (const std::wstring& ruta : i_existentes(p)) {
        const clase_de_entrada clase = es_patron(ruta) ? clase_de_entrada::ninguna : que_hay_en(ruta);
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
                .escribe(a_la_izquierda(di(i_en_palabras(clase)), ancho), vale ? estilo::bueno : estilo::malo)
                .linea(ruta.empty() ? di("(empty)") : a_la_vista(ruta));
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

acceso i_acceso(const std::wstring& dada, bool es_directorio) {
    const std::wstring ruta = ruta_de_trabajo(dada);
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

struct probada {
    std::wstring ruta;
    bool es_directorio;
    acceso como;
};

json i_json_de_test(const probada& x) {
    json fila = json::objeto()
                    .pon("path", x.ruta)
                    .pon("kind", x.es_directorio ? "directory" : "file")
                    .pon("readable", x.como.leer)
                    .pon("writable", x.como.escribir)
                    .pon("protected", esta_protegido(x.ruta));
    if (!x.como.por_que_no.empty()) {
        fila.pon("reason", x.como.por_que_no);
    }
    return fila;
}

void i_pinta_test(const probada& x, bool con_nombre) {
    const auto si_o_no = [](bool si) {
        return celda(di(si ? frase("yes") : frase("no")), si ? estilo::bueno : estilo::malo);
    };
    celda escribible = si_o_no(x.como.escribir);
    escribible.texto += x.como.por_que_no.empty() ? L"" : L": " + x.como.por_que_no;
    if (con_nombre) {
        salida().linea(a_la_vista(x.ruta), estilo::titulo);
    }
    pinta_ficha(salida(), {{"kind", di(x.es_directorio ? frase("directory") : frase("file"))},
                           {"readable", si_o_no(x.como.leer)},
                           {"writable", escribible},
                           {"protected", di(esta_protegido(x.ruta) ? frase("yes") : frase("no"))}});
}

int i_test(peticion& p) {
    const std::vector<std::wstring> rutas = rutas_de(p, que_valen::todo).rutas;
    for (const std::wstring& ruta : rutas) {
        comprueba_existe(ruta);
    }
    const bool pide_todo = !p.tiene("read") && !p.tiene("write");
    json lista = json::lista();
    bool valen = true;
    for (const std::wstring& ruta : rutas) {
        probada x{ruta, que_hay_en(ruta) == clase_de_entrada::directorio, {}};
        x.como = i_acceso(ruta, x.es_directorio);
        valen = valen && (x.como.leer || !(pide_todo || p.tiene("read"))) &&
                (x.como.escribir || !(pide_todo || p.tiene("write")));
        if (p.en_json) {
            lista.agrega(i_json_de_test(x));
        } else {
            i_pinta_test(x, rutas.size() > 1);
        }
    }
    if (p.en_json) {
        escribe_json(lista);
    }
    return valen ? hecho : no;
}

// ---- size and date ----

int i_size(peticion& p) {
    json lista = json::lista();
    tabla t({{"bytes", true}, {"size", true}, {"path", false, true}});
    unsigned long long total = 0;
    bool todas = true;
    const std::vector<std::wstring> rutas = rutas_de(p, que_valen::ficheros).rutas;
    for (const std::wstring& ruta : rutas) {
        unsigned long codigo = 0;
        const bool es_directorio = que_hay_en(ruta) == clase_de_entrada::directorio;
        const unsigned long long bytes =
            es_directorio ? ~0ull : lumodir_get_tamanyo_fichero(ruta_de_trabajo(ruta).c_str(), &codigo);
        if (bytes == ~0ull) {
            todas = false;
            const std::wstring queja = ruta.empty() ? di("the path is empty")
                                       : es_directorio
                                           ? di("'%1' is a directory; du counts what is in it", ruta)
                                           : L"'" + ruta + L"': " + texto_del_sistema(codigo);
            p.en_json
                ? lista.agrega(json::objeto().pon("path", ruta).pon("size", json()).pon("error", queja)),
                void() : void(errores().escribe("lumodir: ", estilo::malo).linea(std::wstring_view(queja)));
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
    for (const std::wstring& ruta : rutas_de(p, que_valen::todo).rutas) {
        const std::optional<long long> modificado = fecha_de(ruta), creado = creacion_de(ruta);
        if (!modificado || !creado) {
            todas = false;
            const std::wstring queja =
                sin_blancos(ruta).empty() ? di("the path is empty") : di("'%1' does not exist", ruta);
            p.en_json  ? lista.agrega(json::objeto()
                                          .pon("path", ruta)
                                          .pon("modified", json())
                                          .pon("modified_seconds", json())
                                          .pon("created", json())
                                          .pon("created_seconds", json())
                                          .pon("error", queja)),
                void() : void(errores().escribe("lumodir: ", estilo::malo).linea(std::wstring_view(queja)));
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

constexpr long long anyo_1601 = -11644473600;  // where the dates of files begin

resultado i_touch_una(const peticion& p, const std::wstring& ruta) {
    long long fecha = lee_fecha(p.tiene("date") ? p.valor("date") : L"now", p.tiene("utc"));
    if (p.tiene("like")) {
        comprueba_existe(p.valor("like"));
        fecha = fecha_de(p.valor("like")).value_or(fecha);
    }
    if (fecha < anyo_1601) {
        return di("the date of '%1' is not set: the dates of files begin in 1601", ruta);
    }
    const clase_de_entrada clase = que_hay_en(ruta);
    if (sin_blancos(ruta).empty()) {
        return di("the path is empty");
    }
    if (clase == clase_de_entrada::directorio) {
        return di("'%1' is a directory", ruta);
    }
    if (clase == clase_de_entrada::ninguna && p.tiene("no-create")) {
        return di("'%1' does not exist", ruta);
    }
    if (p.en_seco()) {
        return {};
    }
    if (clase == clase_de_entrada::ninguna) {
        const std::wstring queja = i_crea_vacio(ruta);
        if (!queja.empty()) {
            return queja;
        }
    }
    return timefich_asignar_fecha_fichero_UTC(ruta_de_trabajo(ruta).c_str(), fecha) == CIERTO
               ? resultado()
               : con_ocupantes(di("the date of '%1' is not set", ruta), ruta);
}

int i_touch(peticion& p) {
    if (p.tiene("date") && p.tiene("like")) {
        throw uso_incorrecto{di("give either --date or --like")};
    }
    if (p.tiene("date")) {
        lee_fecha(p.valor("date"), p.tiene("utc"));  // before anything is created
    }
    return en_cada_una(p, rutas_de(p, que_valen::ficheros).rutas, {"dated", "would date"}, i_touch_una);
}

// ---- mkdir, mv ----

// The directory that a file stands in, as the path says it.
std::wstring i_carpeta_de(const std::wstring& fichero) {
    const size_t fin = fichero.find_last_of(L"\\/");
    if (fin == fichero.npos) {
        return fichero.size() >= 2 && fichero[1] == L':' ? fichero.substr(0, 2) + L"." : L".";
    }
    const std::wstring carpeta = fichero.substr(0, fin);
    return carpeta.empty() || carpeta.back() == L':' ? fichero.substr(0, fin + 1) : carpeta;
}

resultado i_mkdir_una(const peticion& p, const std::wstring& ruta) {
    if (sin_blancos(ruta).empty()) {
        return di("the path is empty");
    }
    resultado r;
    const std::wstring directorio = p.tiene("for-file") ? i_carpeta_de(ruta) : ruta;
    r.ruta = p.tiene("for-file") ? directorio : L"";
    const clase_de_entrada antes = que_hay_en(directorio);
    if (antes == clase_de_entrada::fichero) {
        return di("'%1' is a file", directorio);
    }
    r.ya_estaba = antes == clase_de_entrada::directorio;
    if (r.ya_estaba || p.en_seco()) {
        return r;
    }
    const auto crea = p.tiene("for-file")
                          ? (p.tiene("if-possible") ? cdir_crea_directorios_fichero_si_es_posible_UNICODE
                                                    : cdir_crea_directorios_fichero_UNICODE)
                      : p.tiene("if-possible") ? cdir_crea_directorios_si_es_posible_UNICODE
                                               : cdir_crea_directorios_del_path_UNICODE;
    crea(ruta.c_str());
    // What the library answers is about its levels; what counts is what is there.
    if (que_hay_en(directorio) != clase_de_entrada::directorio) {
        r.queja = di("'%1' is not created", directorio);
        r.ya_dicho = hay_avisos();
    }
    return r;
}

int i_mkdir(peticion& p) {
    const std::vector<std::wstring> rutas = p.argumentos_o_entrada();
    for (const std::wstring& ruta : rutas) {
        rechaza_patron(ruta);
    }
    return en_cada_una(p, rutas, {"created", "would create", "exists already:"}, i_mkdir_una);
}

std::wstring i_ultima_parte(const std::wstring& ruta) {
    return ruta.substr(ruta.find_last_of(L"\\/:") + 1);
}

// Where a file goes: into a directory under its own name, or to the path itself.
std::wstring i_destino(const std::wstring& viejo, const std::wstring& nuevo) {
    return que_hay_en(nuevo) == clase_de_entrada::directorio && !iguales_sin_caja(viejo, nuevo)
               ? bajo_de(nuevo, i_ultima_parte(viejo))
               : nuevo;
}

// Throws fallo when it cannot be moved there.
void i_comprueba_movimiento(const std::wstring& viejo, const std::wstring& nuevo) {
    if (sin_blancos(viejo).empty() || sin_blancos(nuevo).empty()) {
        throw fallo{di("the path is empty: refused, nothing is done")};
    }
    comprueba_existe(viejo);
    if (viejo == nuevo) {
        throw fallo{di("'%1' bears that name already", viejo)};
    }
    // Another letter case of the same name is a new name for the same file.
    if (que_hay_en(nuevo) != clase_de_entrada::ninguna && !iguales_sin_caja(viejo, nuevo)) {
        throw fallo{di("'%1' exists already and is never replaced", nuevo)};
    }
}

void i_mueve(const peticion& p, const std::wstring& viejo, const std::wstring& nuevo) {
    const ruta_en_curso en_curso(viejo);
    const std::wstring de_trabajo = ruta_de_trabajo(viejo);
    hubo_quejas();
    bool movido;
    if (p.tiene("if-possible")) {
        movido = cdir_mueve_fichero(de_trabajo.c_str(), nuevo.c_str()) == CIERTO;
    } else {
        // This one retries and asks, but gives no answer: a move that went through has said nothing.
        cdir_renombra_fichero_UNICODE(de_trabajo.c_str(), nuevo.c_str());
        movido = que_hay_en(nuevo) != clase_de_entrada::ninguna && !hubo_quejas();
    }
    if (!movido) {
        throw fallo{con_ocupantes(di("'%1' is not moved", viejo), viejo)};
    }
    // A change of letter case alone: there are systems that answer that it is done, and keep the old name.
    if (iguales_sin_caja(viejo, nuevo) && nombre_que_lleva(nuevo) != i_ultima_parte(nuevo)) {
        throw fallo{di("'%1' is not moved: the system keeps the letter case of its name", viejo)};
    }
}

bool i_mv_uno(const peticion& p, const std::wstring& viejo, const std::wstring& destino, json& lista) {
    std::wstring queja;
    try {
        if (interrumpido()) {
            queja = di("stopped");
        } else if (!p.en_seco()) {
            i_mueve(p, viejo, destino);
        }
    } catch (const fallo& que) {
        queja = que.texto;
    }
    if (p.en_json) {
        json fila =
            json::objeto().pon("from", viejo).pon("to", destino).pon("done", queja.empty() && !p.en_seco());
        if (p.en_seco()) {
            fila.pon("dry_run", true);
        }
        if (!queja.empty()) {
            fila.pon("error", queja);
        }
        lista.agrega(std::move(fila));
    } else if (queja.empty()) {
        salida()
            .escribe(p.en_seco() ? di("would move") : di("moved"),
                     p.en_seco() ? estilo::aviso : estilo::bueno)
            .linea(di(" %1 to %2", a_la_vista(viejo), a_la_vista(destino)));
    } else {
        errores().escribe("lumodir: ", estilo::malo).linea(std::wstring_view(queja));
    }
    return queja.empty();
}

int i_mv(peticion& p) {
    const std::wstring nuevo = p.argumentos.back();
    p.argumentos.pop_back();
    rechaza_patron(nuevo);
    const rutas_dadas dadas = rutas_de(p, que_valen::ficheros);
    if (dadas.rutas.size() != 1 && que_hay_en(nuevo) != clase_de_entrada::directorio) {
        throw fallo{di("several files go into a directory, and '%1' is none: nothing is done", nuevo)};
    }
    for (const std::wstring& viejo : dadas.rutas) {
        i_comprueba_movimiento(viejo, i_destino(viejo, nuevo));
    }
    json lista = json::lista();
    std::atomic<size_t> movidos{0};
    const interruptor al_pulsar_control_c;
    con_progreso(
        [&] {
            for (const std::wstring& viejo : dadas.rutas) {
                movidos += i_mv_uno(p, viejo, i_destino(viejo, nuevo), lista) ? 1 : 0;
            }
        },
        [&](unsigned segundos) {
            const size_t todos = dadas.rutas.size();
            return di("%1 of %2, %3 s", con_miles(movidos), con_miles(todos), std::to_wstring(segundos)) +
                   lo_que_falta(static_cast<double>(movidos) / static_cast<double>(todos), segundos);
        });
    if (p.en_json) {
        escribe_json(lista);
    }
    return movidos == dadas.rutas.size() ? hecho : no;
}

// ---- protect, unprotect ----

template <bool proteger>
resultado i_protege_una(const peticion& p, const std::wstring& ruta) {
    comprueba_existe(ruta);
    if (p.en_seco()) {
        return {};
    }
    const std::wstring de_trabajo = ruta_de_trabajo(ruta);
    proteger ? lumodir_protege_fichero_UNICODE(de_trabajo.c_str())
             : lumodir_desprotege_fichero_UNICODE(de_trabajo.c_str());
    return esta_protegido(ruta) == proteger
               ? std::wstring()
               : di(proteger ? frase("'%1' is not protected") : frase("'%1' is still protected"), ruta);
}

int i_protect(peticion& p) {
    return en_cada_una(p, rutas_de(p, que_valen::ficheros).rutas, {"protected", "would protect"},
                       i_protege_una<true>);
}
int i_unprotect(peticion& p) {
    return en_cada_una(p, rutas_de(p, que_valen::ficheros).rutas, {"unprotected", "would unprotect"},
                       i_protege_una<false>);
}

// ---- who ----

int i_who(peticion& p) {
    json lista = json::lista();
    tabla t({{"pid", true}, {"program"}, {"path", false, true}});
    for (const std::wstring& ruta : rutas_de(p, que_valen::ficheros).rutas) {
        comprueba_existe(ruta);
        json suyos = json::lista();
        for (const ocupante& o : quien_tiene(ruta)) {
            suyos.agrega(json::objeto().pon("pid", o.pid).pon("program", o.nombre));
            t.fila({std::to_wstring(o.pid), o.nombre, ruta});
        }
        lista.agrega(json::objeto().pon("path", ruta).pon("held_by", std::move(suyos)));
    }
    if (p.en_json) {
        escribe_json(lista);
    } else if (t.vacia()) {
        throw fallo{di("the system names nobody who holds it")};
    } else {
        t.pinta(salida());
    }
    return t.vacia() ? no : hecho;
}

// ---- rename-ext ----

std::wstring i_extension_de(const std::wstring& argumento) {
    std::wstring extension = argumento.starts_with(L'.') ? argumento.substr(1) : argumento;
    if (extension.find_first_of(L"*?") != extension.npos ||
        cdir_extension_valida_UNICODE(extension.c_str()) != CIERTO) {
        throw uso_incorrecto{di("'%1' is not an extension", argumento)};
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

struct cambio {
    std::wstring de, a;
    bool pisa = false;
};

std::vector<cambio> i_cambios(const std::wstring& directorio, const std::wstring& vieja,
                              const std::wstring& nueva) {
    std::vector<cambio> cambios;
    for (const std::wstring& nombre : i_con_extension(directorio, vieja)) {
        const std::wstring otro = toma(cdir_nombre_fichero_con_ext_UNICODE(nombre.c_str(), nueva.c_str()));
        cambios.push_back({nombre, otro,
                           !iguales_sin_caja(otro, nombre) &&
                               que_hay_en(bajo_de(directorio, otro)) != clase_de_entrada::ninguna});
    }
    return cambios;
}

json i_json_de_cambios(const std::vector<cambio>& cambios) {
    json lista = json::lista();
    for (const cambio& c : cambios) {
        lista.agrega(json::objeto().pon("from", c.de).pon("to", c.a).pon("replaces", c.pisa));
    }
    return lista;
}

// Before the question: the first of them.
std::vector<std::wstring> i_en_palabras(const std::vector<cambio>& cambios) {
    std::vector<std::wstring> lineas;
    lineas.reserve(cambios.size());
    for (const cambio& c : cambios) {
        lineas.push_back(c.pisa ? di("%1 to %2, which is replaced", c.de, c.a) : di("%1 to %2", c.de, c.a));
    }
    return lineas;
}

int i_rename_ext(peticion& p) {
    const std::wstring directorio = p.argumentos[0];
    const std::wstring vieja = i_extension_de(p.argumentos[1]), nueva = i_extension_de(p.argumentos[2]);
    rechaza_raiz(directorio);
    comprueba_directorio(directorio);
    const std::vector<cambio> cambios = i_cambios(directorio, vieja, nueva);
    if (cambios.empty()) {
        throw fallo{di("no file in '%1' has the extension '%2'", directorio, vieja)};
    }
    const auto pisados = static_cast<size_t>(
        std::count_if(cambios.begin(), cambios.end(), [](const cambio& c) { return c.pisa; }));
    const std::wstring cuantos = plural(cambios.size(), "file", "files");
    if (!p.si_a_todo && !p.en_seco()) {
        di_cuales(i_en_palabras(cambios));
    }
    confirma(p, pisados == 0 ? di("Rename %1 in '%2' from '.%3' to '.%4'?", cuantos, directorio, vieja, nueva)
                             : di("Rename %1 in '%2' from '.%3' to '.%4', replacing %5 of the same name?",
                                  cuantos, directorio, vieja, nueva, plural(pisados, "file", "files")));
    if (!p.en_seco()) {
        const despedida al_acabar([&] { return di("stopped; some files may have their new names already"); });
        con_progreso(
            [&] { cdir_cambia_extension_ficheros_u(directorio.c_str(), vieja.c_str(), nueva.c_str()); },
            [&](unsigned segundos) { return di("renaming %1, %2 s", cuantos, std::to_wstring(segundos)); });
    } else if (!p.en_json) {
        for (const std::wstring& linea : i_en_palabras(cambios)) {
            salida().escribe(di("would rename"), estilo::aviso).escribe(" ").linea(std::wstring_view(linea));
        }
    }
    const size_t quedan =
        iguales_sin_caja(vieja, nueva) && !p.en_seco() ? 0 : i_con_extension(directorio, vieja).size();
    if (p.en_json) {
        json respuesta = json::objeto()
                             .pon("directory", directorio)
                             .pon("renamed", cambios.size() - quedan)
                             .pon("replaced", p.en_seco() ? 0 : pisados)
                             .pon("left", quedan)
                             .pon("files", i_json_de_cambios(cambios));
        if (p.en_seco()) {
            respuesta.pon("dry_run", true);
        }
        escribe_json(respuesta);
    } else if (!p.en_seco()) {
        salida()
            .escribe(di("renamed"), estilo::bueno)
            .linea(L" " + plural(cambios.size() - quedan, "file", "files"));
    }
    if (p.en_seco()) {
        return hecho;
    }
    if (quedan > 0 && !p.en_json) {
        throw fallo{di("not renamed: %1", plural(quedan, "file", "files"))};
    }
    return quedan > 0 ? no : hecho;
}

// ---- The rows ----

constexpr opcion opciones_exists[] = {{"file", "", "it has to be a file"},
                                      {"dir", "", "it has to be a directory"}};
constexpr ejemplo ejemplos_exists[] = {
    {R"(exists C:\windows\win.ini C:\nothing)", "file, missing; exit code 1"},
    {R"(exists C:\windows\*.ini)", "which files match; missing when there are none"},
};
constexpr opcion opciones_test[] = {{"read", "", "the exit code is about reading only"},
                                    {"write", "", "the exit code is about writing only"}};
constexpr ejemplo ejemplos_test[] = {
    {R"(test C:\data\report.txt --write)", "can this program alone write it, and if not, why"}};
constexpr ejemplo ejemplos_size[] = {
    {R"(size C:\windows\win.ini C:\windows\system.ini)", "each, and the total"}};
constexpr opcion opciones_date[] = {{"utc", "", "in UTC instead of local time"}};
constexpr ejemplo ejemplos_date[] = {{R"(date C:\windows\win.ini)", "when it was modified and created"}};
constexpr opcion opciones_touch[] = {
    {"date", "D",
     "now (the default), 2024-05-01, \"2024-05-01 12:30[:00]\", a final Z for\nUTC, or @SECONDS since 1970 "
     "in UTC"},
    {"like", "FILE", "the date of another file"},
    {"utc", "", "the date is in UTC"},
    {"no-create", "", "do not create a missing file"},
    opcion_en_seco,
};
constexpr ejemplo ejemplos_touch[] = {{R"(touch report.txt --date "2024-05-01 12:30")", "in local time"}};
constexpr opcion opciones_mkdir[] = {
    {"for-file", "", "the paths name files whose directories are wanted"},
    {"if-possible", "", "without a message of the library and without asking"},
    opcion_en_seco,
};
constexpr ejemplo ejemplos_mkdir[] = {{R"(mkdir C:\data\2024\may)", "every missing level"},
                                      {R"(mkdir --for-file C:\data\2024\may\1.txt)", "the same directories"}};
constexpr opcion opciones_mv[] = {{"if-possible", "", "one attempt, without retries and without asking"},
                                  opcion_en_seco};
constexpr opcion opciones_solo_en_seco[] = {opcion_en_seco};
constexpr ejemplo ejemplos_mv[] = {{R"(mv draft.txt C:\data\final.txt)", "rename and move"},
                                   {R"(mv draft.txt C:\data)", "into a directory"},
                                   {R"(mv *.log C:\data\logs)", "every file that matches"}};
constexpr ejemplo ejemplos_protect[] = {{"protect report.txt", "make it read-only"},
                                        {"protect *.cfg --dry-run", "which files would become so"}};
constexpr ejemplo ejemplos_unprotect[] = {{"unprotect report.txt", "make it writable"}};
constexpr ejemplo ejemplos_rename_ext[] = {
    {R"(rename-ext C:\data tmp bak)", "every .tmp there becomes .bak"}};

constexpr ejemplo ejemplos_who[] = {{R"(who C:\data\report.txt)", "the programs that have it open"}};

constexpr orden ordenes[] = {
    {"exists", "PATH...", "tell whether files or directories exist",
     "A path may have * and ? in its last component: what matches is told, each with its kind.", 1,
     cuantos_sean, opciones_exists, ejemplos_exists, i_exists},
    {"test", "PATH...", "tell whether files or directories can be read and written, and why not",
     "A file is writable when this program can open it alone; a directory when a file "
     "can be created in it, which is tried.",
     1, cuantos_sean, opciones_test, ejemplos_test, i_test},
    {"size",
     "FILE...",
     "sizes of files",
     "For directories there is du.",
     1,
     cuantos_sean,
     {},
     ejemplos_size,
     i_size},
    {"date", "PATH...", "when files were modified and created", "", 1, cuantos_sean, opciones_date,
     ejemplos_date, i_date},
    {"touch", "FILE... [--date D]", "set the date of files, creating missing ones",
     "A pattern means the files that match it; none is created for it.", 1, cuantos_sean, opciones_touch,
     ejemplos_touch, i_touch},
    {"mkdir", "DIR...", "create directories with their missing parents",
     "A level that cannot be created is tried again for a moment; on a terminal you "
     "are then asked.",
     1, cuantos_sean, opciones_mkdir, ejemplos_mkdir, i_mkdir},
    {"mv", "OLD... NEW", "rename or move files; nothing is ever replaced",
     "A file held open by another program is tried again for a moment; on a terminal "
     "you are then told who holds it and asked. Trees are not moved to other drives.",
     2, cuantos_sean, opciones_mv, ejemplos_mv, i_mv},
    {"protect", "FILE...", "make files read-only", "", 1, cuantos_sean, opciones_solo_en_seco,
     ejemplos_protect, i_protect},
    {"unprotect", "FILE...", "make files writable", "", 1, cuantos_sean, opciones_solo_en_seco,
     ejemplos_unprotect, i_unprotect},
    {"rename-ext", "DIR OLD NEW", "change the extension of all files that have a given one",
     "A file that already has a new name is deleted for it: you are shown which "
     "before anything is done. Drive roots are refused.",
     3, 3, opciones_solo_en_seco, ejemplos_rename_ext, i_rename_ext},
    {"who",
     "FILE...",
     "which programs hold a file",
     "The system tells it of programs that you may look at. The exit code is 1 when it names nobody.",
     1,
     cuantos_sean,
     {},
     ejemplos_who,
     i_who},
};

}  // namespace

const std::span<const orden> ordenes_ficheros = ordenes;

}  // namespace mando
