// Files: exists, test, size, date, touch, mkdir, mv, protect, unprotect, rename-ext, who.
#include <algorithm>
#include <atomic>

#include "anfitrion.hpp"
#include "comodines.hpp"
#include "consola.hpp"
#include "directorios.hpp"
#include "ficheros.hpp"
#include "lumodir.hpp"
#include "ocupantes.hpp"
#include "ordenes.hpp"
#include "respuesta.hpp"
#include "sistema_windows.hpp"
#include "textos.hpp"
#include "trabajo.hpp"

namespace mando {

namespace {

namespace cdir = lumodir::cdir;

// ---- exists ----

frase i_en_palabras(clase_de_entrada clase) {
    return clase == clase_de_entrada::fichero      ? frase("file")
           : clase == clase_de_entrada::directorio ? frase("directory")
                                                   : frase("missing");
}

// The directory that a file stands in, as the path says it.
std::wstring i_carpeta_de(const std::wstring& fichero) {
    const size_t fin = fichero.find_last_of(L"\\/");
    if (fin == fichero.npos) {
        return fichero.size() >= 2 && fichero[1] == L':' ? fichero.substr(0, 2) + L"." : L".";
    }
    const std::wstring carpeta = fichero.substr(0, fin);
    return carpeta.empty() || carpeta.back() == L':' ? fichero.substr(0, fin + 1) : carpeta;
}

// A pattern is replaced by what matches it; one that nothing matches stays, to be told as missing.
std::vector<std::wstring> i_existentes(const peticion& p) {
    std::vector<std::wstring> rutas;
    for (const std::wstring& ruta : p.argumentos_o_entrada()) {
        std::vector<std::wstring> halladas;
        if (es_patron(ruta)) {
            try {
                halladas = expande(ruta, p.tiene("file") ? que_valen::ficheros : que_valen::todo);
            } catch (const fallo& que) {
                const std::wstring carpeta = i_carpeta_de(ruta);
                if (es_patron(carpeta) || que_hay_en(carpeta) != clase_de_entrada::ninguna) {
                    di_queja(que.texto);
                }
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
    respuesta_por_piezas vistas(p);
    bool todas = true;
    con_cada_ruta(i_existentes(p), [&](const std::wstring& ruta) {
        const clase_de_entrada clase = es_patron(ruta) ? clase_de_entrada::ninguna : que_hay_en(ruta);
        const bool existe = clase != clase_de_entrada::ninguna;
        const bool vale = existe && (!p.tiene("file") || clase == clase_de_entrada::fichero) &&
                          (!p.tiene("dir") || clase == clase_de_entrada::directorio);
        todas = todas && vale;
        const frase que_es = i_en_palabras(clase);
        vistas.pieza(json::objeto().pon("path", ruta).pon("exists", existe).pon("kind", que_es.ingles()),
                     [&] {
                         salida()
                             .escribe(a_la_izquierda(di(que_es), ancho), vale ? estilo::bueno : estilo::malo)
                             .linea(ruta.empty() ? di("(empty)") : a_la_vista(ruta));
                     });
    });
    return vistas.acaba(todas);
}

// ---- test ----

struct acceso {
    bool leer = false, escribir = false;
    std::wstring por_que_no;
};

acceso i_acceso(const std::wstring& dada, bool es_directorio) {
    const std::wstring ruta = ruta_de_trabajo(dada);
    acceso a;
    lumodir::respuesta escribir;
    if (es_directorio) {
        a.leer = por_que_no_se_lee(ruta) == 0;
        if (ruta.starts_with(L"\\\\?\\")) {  // which the library's rules of paths do not accept
            const std::wstring probado = lumodir::creaFicheroUnicoEnDirectorio(ruta, L"tmp");
            a.escribir = !probado.empty() && que_hay_en(probado) == clase_de_entrada::fichero;
            a.por_que_no = a.escribir ? L"" : di("no temporary file could be created");
            lumodir::borra_fichero_si_existe_sin_mensaje(probado);
            return a;
        }
        escribir = cdir::se_puede_escribir_en_directorio(ruta);
    } else {
        a.leer = cdir::se_puede_leer(ruta);
        escribir = lumodir::se_puede_escribir_ex(ruta);
    }
    a.escribir = escribir.bien;
    a.por_que_no = escribir.motivo;
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
    pinta_ficha(salida(),
                {{.nombre = "kind", .valor = di(x.es_directorio ? frase("directory") : frase("file"))},
                 {.nombre = "readable", .valor = si_o_no(x.como.leer)},
                 {.nombre = "writable", .valor = escribible},
                 {.nombre = "protected", .valor = di(esta_protegido(x.ruta) ? frase("yes") : frase("no"))}});
}

int i_test(peticion& p) {
    const std::vector<std::wstring> rutas = rutas_de(p, que_valen::todo).rutas;
    for (const std::wstring& ruta : rutas) {
        comprueba_existe(ruta);
    }
    const bool pide_todo = !p.tiene("read") && !p.tiene("write");
    respuesta_por_piezas probadas(p);
    bool valen = true;
    con_cada_ruta(rutas, [&](const std::wstring& ruta) {
        probada x{ruta, que_hay_en(ruta) == clase_de_entrada::directorio, {}};
        x.como = i_acceso(ruta, x.es_directorio);
        valen = valen && (x.como.leer || !(pide_todo || p.tiene("read"))) &&
                (x.como.escribir || !(pide_todo || p.tiene("write")));
        probadas.pieza(i_json_de_test(x), [&] { i_pinta_test(x, rutas.size() > 1); });
    });
    return probadas.acaba(valen);
}

// ---- size and date ----

int i_size(peticion& p) {
    respuesta tamanyos(p, {{.clave = "size", .como = {.titulo = "bytes", .a_la_derecha = true}},
                           {.como = {.titulo = "size", .a_la_derecha = true}},
                           {.clave = "path", .como = {.titulo = "path", .elastica = true}, .nombra = true}});
    unsigned long long total = 0;
    bool todas = true;
    const std::vector<std::wstring> rutas = rutas_de(p, que_valen::ficheros).rutas;
    con_cada_ruta(rutas, [&](const std::wstring& ruta) {
        std::wstring por_que;
        std::optional<unsigned long long> bytes;
        if (ruta.empty()) {
            por_que = di("the path is empty");
        } else if (que_hay_en(ruta) == clase_de_entrada::directorio) {
            por_que = di("'%1' is a directory; du counts what is in it", ruta);
        } else {
            unsigned long codigo = 0;
            bytes = lumodir::get_tamanyo_fichero(ruta_de_trabajo(ruta), &codigo);
            por_que = bytes ? L"" : L"'" + ruta + L"': " + texto_del_sistema(codigo);
        }
        if (bytes) {
            total += *bytes;
            tamanyos.fila({*bytes, tamanyo_legible(*bytes), ruta});
        } else {
            todas = false;
            tamanyos.falla(ruta, por_que);
        }
    });
    if (rutas.size() > 1) {
        tamanyos.total({celda(con_miles(total), estilo::titulo),
                        celda(tamanyo_legible(total), estilo::titulo), celda(di("total"), estilo::titulo)});
    }
    tamanyos.di_lista();
    return todas ? hecho : no;
}

// A date in words; for scripts there is a T between day and hour.
valor i_valor_de_fecha(long long segundos, bool en_utc) {
    return {fecha_en_palabras(segundos, en_utc, L'T'), fecha_en_palabras(segundos, en_utc)};
}

int i_date(peticion& p) {
    const bool en_utc = p.tiene("utc");
    respuesta fechas(p, {{.clave = "modified", .como = {.titulo = "modified"}},
                         {.clave = "modified_seconds"},
                         {.clave = "created", .como = {.titulo = "created"}},
                         {.clave = "created_seconds"},
                         {.clave = "path", .como = {.titulo = "path", .elastica = true}, .nombra = true}});
    bool todas = true;
    con_cada_ruta(rutas_de(p, que_valen::todo).rutas, [&](const std::wstring& ruta) {
        const std::optional<long long> modificado = fecha_de(ruta), creado = creacion_de(ruta);
        if (modificado && creado) {
            fechas.fila({i_valor_de_fecha(*modificado, en_utc), valor(*modificado, celda(L"")),
                         i_valor_de_fecha(*creado, en_utc), valor(*creado, celda(L"")), ruta});
        } else {
            todas = false;
            fechas.falla(
                ruta, sin_blancos(ruta).empty() ? di("the path is empty") : di("'%1' does not exist", ruta));
        }
    });
    fechas.di_lista();
    return todas ? hecho : no;
}

// ---- touch ----

std::wstring i_crea_vacio(const std::wstring& ruta) {
    const lumodir::cadena para_el_sistema =
        lumodir::lmlongpath_prepended_path_si_necesario(ruta_de_trabajo(ruta));
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
        resultado r;
        r.se_crea = clase == clase_de_entrada::ninguna;
        return r;
    }
    if (clase == clase_de_entrada::ninguna) {
        const std::wstring queja = i_crea_vacio(ruta);
        if (!queja.empty()) {
            return queja;
        }
    }
    return lumodir::timefich::asignar_fecha_fichero_UTC(ruta_de_trabajo(ruta), fecha)
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
    return en_cada_una(p, rutas_de(p, que_valen::ficheros).rutas,
                       {.hecho = "dated", .se_haria = "would date"}, i_touch_una);
}

// ---- mkdir, mv ----

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
                          ? (p.tiene("if-possible") ? cdir::crea_directorios_fichero_si_es_posible
                                                    : cdir::crea_directorios_fichero)
                      : p.tiene("if-possible") ? cdir::crea_directorios_si_es_posible
                                               : cdir::crea_directorios_del_path;
    crea(ruta_de_trabajo(ruta));
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
    return en_cada_una(p, rutas,
                       {.hecho = "created", .se_haria = "would create", .ya_estaba = "exists already:"},
                       i_mkdir_una);
}

std::wstring i_ultima_parte(const std::wstring& ruta) {
    // A separator at the end belongs to the name of a directory.
    const std::wstring sin_final = ruta.substr(0, ruta.find_last_not_of(L"\\/") + 1);
    return sin_final.substr(sin_final.find_last_of(L"\\/:") + 1);
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
    const std::wstring de_trabajo = ruta_de_trabajo(viejo), a_donde = ruta_de_trabajo(nuevo);
    hubo_quejas();
    bool movido;
    if (p.tiene("if-possible")) {
        movido = cdir::mueve_fichero(de_trabajo, a_donde);
    } else {
        // This one retries and asks, but gives no answer: a move that went through has said nothing.
        cdir::renombra_fichero(de_trabajo, a_donde);
        movido = que_hay_en(nuevo) != clase_de_entrada::ninguna && !hubo_quejas();
    }
    if (!movido) {
        throw fallo{con_ocupantes(di("'%1' is not moved", viejo), viejo)};
    }
    // A change of letter case alone: some systems answer that it is done and keep the old name.
    if (iguales_sin_caja(viejo, nuevo)) {
        const std::optional<entrada> e = entrada_de(nuevo);
        if (!e || e->nombre != i_ultima_parte(nuevo)) {
            throw fallo{di("'%1' is not moved: the system keeps the letter case of its name", viejo)};
        }
    }
}

bool i_mv_uno(const peticion& p, const std::wstring& viejo, const std::wstring& destino,
              respuesta_por_piezas& lo_hecho) {
    std::wstring por_que;
    try {
        if (interrumpido()) {
            por_que = di("stopped");
        } else if (!p.en_seco()) {
            toma_avisos();
            i_mueve(p, viejo, destino);
        }
    } catch (const fallo& que) {
        por_que = que.texto;
    }
    json fila =
        json::objeto().pon("from", viejo).pon("to", destino).pon("done", por_que.empty() && !p.en_seco());
    if (p.en_seco()) {
        fila.pon("dry_run", true);
    }
    if (!por_que.empty()) {
        fila.pon("error", por_que);
    }
    lo_hecho.pieza(std::move(fila), [&] {
        if (!por_que.empty()) {
            if (!hay_avisos() || en_la_lengua_de_los_mensajes()) {
                di_queja(por_que);
            }
            return;
        }
        salida()
            .escribe(p.en_seco() ? di("would move") : di("moved"),
                     p.en_seco() ? estilo::aviso : estilo::bueno)
            .linea(di(" %1 to %2", a_la_vista(viejo), a_la_vista(destino)));
    });
    return por_que.empty();
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
    respuesta_por_piezas lo_hecho(p);
    std::atomic<size_t> movidos{0};
    const interruptor al_pulsar_control_c;
    con_progreso(
        [&] {
            for (const std::wstring& viejo : dadas.rutas) {
                movidos += i_mv_uno(p, viejo, i_destino(viejo, nuevo), lo_hecho) ? 1 : 0;
            }
        },
        [&](unsigned segundos) { return por_donde_va(movidos, dadas.rutas, segundos); });
    return lo_hecho.acaba(movidos == dadas.rutas.size());
}

// ---- protect, unprotect ----

template <bool proteger>
resultado i_protege_una(const peticion& p, const std::wstring& ruta) {
    comprueba_existe(ruta);
    if (que_hay_en(ruta) == clase_de_entrada::directorio) {
        return di("'%1' is a directory", ruta);
    }
    if (p.en_seco()) {
        return {};
    }
    const std::wstring de_trabajo = ruta_de_trabajo(ruta);
    const auto cambia = proteger ? lumodir::protege_fichero : lumodir::desprotege_fichero;
    cambia(de_trabajo);
    return esta_protegido(ruta) == proteger
               ? std::wstring()
               : di(proteger ? frase("'%1' is not protected") : frase("'%1' is still protected"), ruta);
}

int i_protect(peticion& p) {
    return en_cada_una(p, rutas_de(p, que_valen::ficheros).rutas,
                       {.hecho = "protected", .se_haria = "would protect"}, i_protege_una<true>);
}
int i_unprotect(peticion& p) {
    return en_cada_una(p, rutas_de(p, que_valen::ficheros).rutas,
                       {.hecho = "unprotected", .se_haria = "would unprotect"}, i_protege_una<false>);
}

// ---- who ----

int i_who(peticion& p) {
    respuesta ocupantes(p, {{.clave = "pid", .como = {.titulo = "pid", .a_la_derecha = true}},
                            {.clave = "program", .como = {.titulo = "program"}},
                            {.como = {.titulo = "path", .elastica = true}}});
    json lista = json::lista();
    con_cada_ruta(rutas_de(p, que_valen::ficheros).rutas, [&](const std::wstring& ruta) {
        comprueba_existe(ruta);
        json suyos = json::lista();
        for (const ocupante& o : quien_tiene(ruta)) {
            suyos.agrega(json::objeto().pon("pid", o.pid).pon("program", o.nombre));
            ocupantes.fila({valor(o.pid, std::to_wstring(o.pid)), o.nombre, ruta});
        }
        lista.agrega(json::objeto().pon("path", ruta).pon("held_by", std::move(suyos)));
    });
    return responde(
        p, lista,
        [&] {
            if (ocupantes.vacia()) {
                di_queja(di("the system names nobody who holds it"));
            }
            ocupantes.pinta();
        },
        ocupantes.vacia() ? no : hecho);
}

// ---- rename-ext ----

std::wstring i_extension_de(const std::wstring& argumento) {
    std::wstring extension = argumento.starts_with(L'.') ? argumento.substr(1) : argumento;
    if (extension.find_first_of(L"*?") != extension.npos || !cdir::extension_valida(extension)) {
        throw uso_incorrecto{di("'%1' is not an extension", argumento)};
    }
    return extension;
}

std::vector<std::wstring> i_con_extension(const std::wstring& directorio, const std::wstring& extension) {
    return cdir::lista_de_ficheros(directorio, extension).vector();
}

struct cambio {
    std::wstring de, a;
    bool pisa = false;
};

std::vector<cambio> i_cambios(const std::wstring& directorio, const std::wstring& vieja,
                              const std::wstring& nueva) {
    std::vector<cambio> cambios;
    for (const std::wstring& nombre : i_con_extension(directorio, vieja)) {
        const std::wstring otro = cdir::nombre_fichero_con_ext(nombre, nueva);
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
        const std::wstring de = a_la_vista(c.de), a = a_la_vista(c.a);
        lineas.push_back(c.pisa ? di("%1 to %2, which is replaced", de, a) : di("%1 to %2", de, a));
    }
    return lineas;
}

int i_rename_ext(peticion& p) {
    const std::wstring directorio = p.argumentos[0];
    const std::wstring vieja = i_extension_de(p.argumentos[1]), nueva = i_extension_de(p.argumentos[2]);
    if (vieja == nueva) {
        throw uso_incorrecto{di("the files would keep their names: the extension is '%1' already", nueva)};
    }
    rechaza_raiz(directorio);
    comprueba_directorio(directorio);
    const std::wstring de_trabajo = ruta_de_trabajo(directorio);
    const std::vector<cambio> cambios = i_cambios(de_trabajo, vieja, nueva);
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
            [&] { cdir::cambia_extension_ficheros(de_trabajo, vieja, nueva); },
            [&](unsigned segundos) { return di("renaming %1, %2 s", cuantos, std::to_wstring(segundos)); });
    }
    const size_t quedan =
        iguales_sin_caja(vieja, nueva) && !p.en_seco() ? 0 : i_con_extension(de_trabajo, vieja).size();
    json todo = json::objeto()
                    .pon("directory", directorio)
                    .pon("renamed", cambios.size() - quedan)
                    .pon("replaced", p.en_seco() ? 0 : pisados)
                    .pon("left", quedan)
                    .pon("files", i_json_de_cambios(cambios));
    if (p.en_seco()) {
        return responde(p, todo.pon("dry_run", true), [&] {
            for (const std::wstring& linea : i_en_palabras(cambios)) {
                salida()
                    .escribe(di("would rename"), estilo::aviso)
                    .escribe(" ")
                    .linea(std::wstring_view(linea));
            }
        });
    }
    return responde(
        p, todo,
        [&] {
            salida()
                .escribe(di("renamed"), estilo::bueno)
                .linea(L" " + plural(cambios.size() - quedan, "file", "files"));
            if (quedan > 0) {
                di_queja(di("not renamed: %1", plural(quedan, "file", "files")));
            }
        },
        quedan > 0 ? no : hecho);
}

// ---- The rows ----

constexpr opcion opciones_exists[] = {
    {.nombre = "file", .ayuda = "it has to be a file"},
    {.nombre = "dir", .ayuda = "it has to be a directory"},
};
constexpr ejemplo ejemplos_exists[] = {
    {.linea = R"(exists C:\windows\win.ini C:\nothing)", .que_hace = "file, missing; exit code 1"},
    {.linea = R"(exists C:\windows\*.ini)", .que_hace = "which files match; missing when there are none"},
};
constexpr opcion opciones_test[] = {
    {.nombre = "read", .ayuda = "the exit code is about reading only"},
    {.nombre = "write", .ayuda = "the exit code is about writing only"},
};
constexpr ejemplo ejemplos_test[] = {
    {.linea = R"(test C:\data\report.txt --write)",
     .que_hace = "can this program alone write it, and if not, why"},
};
constexpr ejemplo ejemplos_size[] = {
    {.linea = R"(size C:\windows\win.ini C:\windows\system.ini)", .que_hace = "each, and the total"},
};
constexpr opcion opciones_date[] = {
    {.nombre = "utc", .ayuda = "in UTC instead of local time"},
};
constexpr ejemplo ejemplos_date[] = {
    {.linea = R"(date C:\windows\win.ini)", .que_hace = "when it was modified and created"},
};
constexpr opcion opciones_touch[] = {
    {.nombre = "date",
     .valor = "D",
     .ayuda = "now (the default), 2024-05-01, \"2024-05-01 12:30[:00]\", a final Z for\nUTC, or @SECONDS "
              "since 1970 in UTC"},
    {.nombre = "like", .valor = "FILE", .ayuda = "the date of another file"},
    {.nombre = "utc", .ayuda = "the date is in UTC"},
    {.nombre = "no-create", .ayuda = "do not create a missing file"},
    opcion_en_seco,
};
constexpr ejemplo ejemplos_touch[] = {
    {.linea = R"(touch report.txt --date "2024-05-01 12:30")", .que_hace = "in local time"},
};
constexpr opcion opciones_mkdir[] = {
    {.nombre = "for-file", .ayuda = "the paths name files whose directories are wanted"},
    {.nombre = "if-possible", .ayuda = "without a message of the library and without asking"},
    opcion_en_seco,
};
constexpr ejemplo ejemplos_mkdir[] = {
    {.linea = R"(mkdir C:\data\2024\may)", .que_hace = "every missing level"},
    {.linea = R"(mkdir --for-file C:\data\2024\may\1.txt)", .que_hace = "the same directories"},
};
constexpr opcion opciones_mv[] = {
    {.nombre = "if-possible", .ayuda = "one attempt, without retries and without asking"},
    opcion_en_seco,
};
constexpr opcion opciones_solo_en_seco[] = {
    opcion_en_seco,
};
constexpr ejemplo ejemplos_mv[] = {
    {.linea = R"(mv draft.txt C:\data\final.txt)", .que_hace = "rename and move"},
    {.linea = R"(mv draft.txt C:\data)", .que_hace = "into a directory"},
    {.linea = R"(mv *.log C:\data\logs)", .que_hace = "every file that matches"},
};
constexpr ejemplo ejemplos_protect[] = {
    {.linea = "protect report.txt", .que_hace = "make it read-only"},
    {.linea = "protect *.cfg --dry-run", .que_hace = "which files would become so"},
};
constexpr ejemplo ejemplos_unprotect[] = {
    {.linea = "unprotect report.txt", .que_hace = "make it writable"},
};
constexpr ejemplo ejemplos_rename_ext[] = {
    {.linea = R"(rename-ext C:\data tmp bak)", .que_hace = "every .tmp there becomes .bak"},
};

constexpr ejemplo ejemplos_who[] = {
    {.linea = R"(who C:\data\report.txt)", .que_hace = "the programs that have it open"},
};

constexpr orden tabla_ficheros[] = {
    {.nombre = "exists",
     .argumentos = "PATH...",
     .resumen = "tell whether files or directories exist",
     .detalle = "A path may have * and ? in its last component: what matches is told, each with its kind.",
     .minimo = 1,
     .maximo = cuantos_sean,
     .opciones = opciones_exists,
     .ejemplos = ejemplos_exists,
     .ejecuta = i_exists},
    {.nombre = "test",
     .argumentos = "PATH...",
     .resumen = "tell whether files or directories can be read and written, and why not",
     .detalle = "A file is writable when this program can open it alone; a directory when a file can be "
                "created in it, which is tried.",
     .minimo = 1,
     .maximo = cuantos_sean,
     .opciones = opciones_test,
     .ejemplos = ejemplos_test,
     .ejecuta = i_test},
    {.nombre = "size",
     .argumentos = "FILE...",
     .resumen = "sizes of files",
     .detalle = "For directories there is du.",
     .minimo = 1,
     .maximo = cuantos_sean,
     .ejemplos = ejemplos_size,
     .ejecuta = i_size},
    {.nombre = "date",
     .argumentos = "PATH...",
     .resumen = "when files were modified and created",
     .minimo = 1,
     .maximo = cuantos_sean,
     .opciones = opciones_date,
     .ejemplos = ejemplos_date,
     .ejecuta = i_date},
    {.nombre = "touch",
     .argumentos = "FILE... [--date D]",
     .resumen = "set the date of files, creating missing ones",
     .detalle = "A pattern means the files that match it; none is created for it.",
     .minimo = 1,
     .maximo = cuantos_sean,
     .opciones = opciones_touch,
     .ejemplos = ejemplos_touch,
     .ejecuta = i_touch},
    {.nombre = "mkdir",
     .argumentos = "DIR...",
     .resumen = "create directories with their missing parents",
     .detalle =
         "A level that cannot be created is tried again for a moment; on a terminal you are then asked.",
     .minimo = 1,
     .maximo = cuantos_sean,
     .opciones = opciones_mkdir,
     .ejemplos = ejemplos_mkdir,
     .ejecuta = i_mkdir},
    {.nombre = "mv",
     .argumentos = "OLD... NEW",
     .resumen = "rename or move files; nothing is ever replaced",
     .detalle = "A file held open by another program is tried again for a moment; on a terminal you are then "
                "told who holds it and asked. Trees are not moved to other drives.",
     .minimo = 2,
     .maximo = cuantos_sean,
     .opciones = opciones_mv,
     .ejemplos = ejemplos_mv,
     .ejecuta = i_mv},
    {.nombre = "protect",
     .argumentos = "FILE...",
     .resumen = "make files read-only",
     .minimo = 1,
     .maximo = cuantos_sean,
     .opciones = opciones_solo_en_seco,
     .ejemplos = ejemplos_protect,
     .ejecuta = i_protect},
    {.nombre = "unprotect",
     .argumentos = "FILE...",
     .resumen = "make files writable",
     .minimo = 1,
     .maximo = cuantos_sean,
     .opciones = opciones_solo_en_seco,
     .ejemplos = ejemplos_unprotect,
     .ejecuta = i_unprotect},
    {.nombre = "rename-ext",
     .argumentos = "DIR OLD NEW",
     .resumen = "change the extension of all files that have a given one",
     .detalle = "A file that already has a new name is deleted for it: you are shown which before anything "
                "is done. Drive roots are refused.",
     .minimo = 3,
     .maximo = 3,
     .opciones = opciones_solo_en_seco,
     .ejemplos = ejemplos_rename_ext,
     .ejecuta = i_rename_ext},
    {.nombre = "who",
     .argumentos = "FILE...",
     .resumen = "which programs hold a file",
     .detalle =
         "The system tells it of programs that you may look at. The exit code is 1 when it names nobody.",
     .minimo = 1,
     .maximo = cuantos_sean,
     .ejemplos = ejemplos_who,
     .ejecuta = i_who},
};

}  // namespace

const std::span<const orden> ordenes_ficheros = tabla_ficheros;

}  // namespace mando
