// The system: tmp, where, short, long, whereami, drives, ps, kill, about.
#include <algorithm>
#include <cstdlib>

#include "anfitrion.hpp"
#include "comodines.hpp"
#include "consola.hpp"
#include "directorios.hpp"
#include "ficheros.hpp"
#include "lumodir.hpp"
#include "ordenes.hpp"
#include "respuesta.hpp"
#include "sistema_windows.hpp"
#include "textos.hpp"
#include "trabajo.hpp"

namespace mando {

namespace {

// ---- tmp ----

int i_tmp(peticion& p) {
    const wchar_t* extension = p.valor("ext");
    std::wstring ruta;
    if (p.tiene("in")) {
        comprueba_directorio(p.valor("in"));
    }
    if (p.en_seco()) {
        const std::wstring donde =
            p.tiene("in") ? std::wstring(p.valor("in")) : lumodir::dameDirectorioTemporal().texto();
        return responde(p, json::objeto().pon("path", json()).pon("directory", donde).pon("dry_run", true),
                        [&] {
                            salida()
                                .escribe(di("would create"), estilo::aviso)
                                .linea(di(" a file in %1", a_la_vista(donde)));
                        });
    }
    if (p.tiene("in")) {
        ruta = lumodir::creaFicheroUnicoEnDirectorio(ruta_de_trabajo(p.valor("in")),
                                                     extension ? extension : L"tmp");
    } else {
        const std::wstring limpia = !extension ? L"tmp" : extension[0] == L'.' ? extension + 1 : extension;
        ruta = lumodir::creaFicheroTemporalConExt(limpia);
    }
    if (ruta.empty() || que_hay_en(ruta) == clase_de_entrada::ninguna) {
        throw fallo{di("no temporary file could be created")};
    }
    return responde(p, "path", ruta);
}

// ---- where ----

// The names that the system would look for: the one given, then with each of the endings of PATHEXT.
std::vector<std::wstring> i_candidatos(const std::wstring& nombre) {
    std::vector<std::wstring> candidatos = {nombre};
    const wchar_t* extensiones = _wgetenv(L"PATHEXT");
    std::wstring resto = extensiones ? extensiones : L".COM;.EXE;.BAT;.CMD";
    while (!resto.empty()) {
        const size_t fin = std::min(resto.find(L';'), resto.size());
        if (fin > 0) {
            candidatos.push_back(nombre + en_minusculas(resto.substr(0, fin)));
        }
        resto.erase(0, fin + 1);
    }
    return candidatos;
}

int i_where(peticion& p) {
    std::vector<std::wstring> hallados;
    con_progreso(
        [&] {
            for (const std::wstring& candidato : i_candidatos(p.argumentos[0])) {
                const lumodir::lista rutas = lumodir::busca_ejecutables_del_path(candidato);
                for (const std::wstring_view ruta : rutas) {
                    if (que_hay_en(std::wstring(ruta)) == clase_de_entrada::fichero) {
                        hallados.emplace_back(ruta);
                    }
                }
            }
        },
        [](unsigned segundos) {
            return di("looking in the directories of PATH, %1 s", std::to_wstring(segundos));
        });
    return responde(
        p, json::objeto().pon("name", p.argumentos[0]).pon("paths", hallados),
        [&] {
            if (hallados.empty()) {
                di_queja(di("'%1' is in no directory of PATH", p.argumentos[0]));
            }
            for (const std::wstring& ruta : hallados) {
                salida().linea(std::wstring_view(ruta));
            }
        },
        hallados.empty() ? no : hecho);
}

// ---- short, long ----

template <lumodir::cadena (*convierte)(const lumodir::argumento&)>
int i_forma(peticion& p) {
    respuesta_por_piezas formas(p);
    bool todas = true;
    con_cada_ruta(rutas_de(p, que_valen::todo).rutas, [&](const std::wstring& ruta) {
        const lumodir::cadena forma = convierte(ruta);
        const bool existe = que_hay_en(ruta) != clase_de_entrada::ninguna;
        todas = todas && existe;
        formas.pieza(json::objeto().pon("path", ruta).pon("result", forma.vista()).pon("exists", existe),
                     [&] {
                         if (!existe) {
                             di_queja(di("'%1' does not exist and stays as it is", ruta), estilo::aviso);
                         }
                         salida().linea(forma.vista());
                     });
    });
    return formas.acaba(todas);
}

// ---- whereami, about ----

int i_whereami(peticion& p) {
    respuesta donde(p, {{.clave = "program", .como = {.titulo = "program"}},
                        {.clave = "program_drive", .como = {.titulo = "program drive"}},
                        {.clave = "current_directory", .como = {.titulo = "current directory"}},
                        {.clave = "temporary_directory", .como = {.titulo = "temporary directory"}}});
    donde.fila({lumodir::dame_path_completo_del_programa().vista(), lumodir::cdir::disco_de_programa(),
                lumodir::cdir::obtener_path_actual().vista(), lumodir::dameDirectorioTemporal().vista()});
    donde.di_ficha();
    return hecho;
}

// The real version, which GetVersionExW hides from programs that do not name it in their manifest:
// https://learn.microsoft.com/en-us/windows/win32/sysinfo/targeting-your-application-at-windows-8-1
std::wstring i_version_de_windows() {
    using funcion = long(__stdcall*)(OSVERSIONINFOW*);
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    const auto pregunta_version = reinterpret_cast<funcion>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetVersion")));
    if (pregunta_version) {
        pregunta_version(&version);
    }
    return std::to_wstring(version.dwMajorVersion) + L"." + std::to_wstring(version.dwMinorVersion) + L"." +
           std::to_wstring(version.dwBuildNumber);
}

std::wstring i_version_de_wine() {
    using funcion = const char*(__cdecl*)();
    const auto pregunta_version = reinterpret_cast<funcion>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version")));
    return pregunta_version ? L" " + de_utf8(pregunta_version()) : L"";
}

int i_about(peticion& p) {
    const lumodir::idioma cual = lumodir::dame_idioma();
    const auto ranura = static_cast<unsigned long>(cual);
    std::wstring dll(MAX_PATH, L'\0');
    dll.resize(GetModuleFileNameW(GetModuleHandleW(L"lumodir.dll"), dll.data(), MAX_PATH));
    const std::wstring sistema =
        lumodir::wine::estamos_en_wine()
            ? L"Wine" + i_version_de_wine() + L" (Windows " + i_version_de_windows() + L")"
            : L"Windows " + i_version_de_windows();
    respuesta datos(p, {{.clave = "version", .como = {.titulo = "version"}},
                        {.clave = "library", .como = {.titulo = "library"}},
                        {.clave = "system", .como = {.titulo = "system"}},
                        {.clave = "code_page", .como = {.titulo = "code page"}},
                        {.clave = "language", .como = {.titulo = "language"}},
                        {.clave = "language_slot"}});
    datos.fila(
        {ancho_de(LUMODIR_VERSION), dll, sistema,
         valor(static_cast<unsigned long>(GetACP()), std::to_wstring(GetACP())),
         valor(nombre_de_idioma(cual), nombre_de_idioma(cual) + L" (" + std::to_wstring(ranura) + L")"),
         valor(ranura, celda(L""))});
    datos.di_ficha();
    return hecho;
}

// ---- drives ----

frase i_tipo(unsigned long tipo) {
    switch (tipo) {
        case INFO_TIPO_DISQUETE:
            return "floppy";
        case INFO_TIPO_FIJO:
            return "fixed";
        case INFO_TIPO_EXTRAIBLE:
            return "removable";
        case INFO_TIPO_CDROM:
            return "CD-ROM";
        case INFO_TIPO_RED:
            return "network";
        default:
            return "other";
    }
}

void i_apunta_unidad(respuesta& unidades, const InfoDisco& d) {
    const wchar_t letra = static_cast<wchar_t>(L'A' + d.disco);
    const bool con_volumen = d.tipo == INFO_TIPO_FIJO || d.tipo == INFO_TIPO_EXTRAIBLE;
    const std::wstring de_red = d.pathNetwork ? d.pathNetwork : L"";
    const std::wstring texto = de_pagina_activa(lumodir::info::GetTxtDrive(d).vista());
    const auto directorio = lumodir::info::GetActualDirectorio_compatible_chdir(d.disco + 1);
    unidades.fila({valor(texto, celda(texto, estilo::bueno)), i_tipo(d.tipo),
                   con_volumen ? lumodir::discos::nombre_volumen(d.disco).texto() : de_red,
                   lumodir::discos::es_unidad_local(letra), lumodir::discos::es_unidad_subst(letra),
                   directorio ? directorio->vista() : std::wstring_view()});
}

int i_drives(peticion& p) {
    respuesta unidades(
        p, {{.clave = "drive", .como = {.titulo = "drive"}},
            {.clave = "type", .como = {.titulo = "type"}},
            {.clave = "name", .como = {.titulo = "name"}},
            {.clave = "local", .como = {.titulo = "local"}},
            {.clave = "subst", .como = {.titulo = "subst"}},
            {.clave = "current_directory", .como = {.titulo = "current directory", .elastica = true}}});
    con_progreso(
        [&] {
            for (const InfoDisco& d : lumodir::info::tabla()) {
                i_apunta_unidad(unidades, d);
            }
        },
        [](unsigned segundos) { return di("asking the drives, %1 s", std::to_wstring(segundos)); });
    unidades.di_lista();
    return hecho;
}

// ---- ps, kill ----

lumodir::taskproc::procesos i_procesos(const std::wstring& modulo) {
    lumodir::taskproc::procesos hallados;
    con_progreso(
        [&] { hallados = lumodir::taskproc::busca_proceso_abierto(modulo); },
        [](unsigned segundos) { return di("looking at the processes, %1 s", std::to_wstring(segundos)); });
    return hallados;
}

int i_ps(peticion& p) {
    respuesta filas(p, {{.clave = "pid", .como = {.titulo = "pid", .a_la_derecha = true}},
                        {.clave = "module", .como = {.titulo = "module"}},
                        {.clave = "path", .como = {.titulo = "path", .elastica = true}}});
    const lumodir::taskproc::procesos hallados = i_procesos(p.argumentos[0]);
    for (const Taskproc& proceso : hallados) {
        filas.fila({valor(proceso.pid, std::to_wstring(proceso.pid)), std::wstring(proceso.modulo),
                    lumodir::taskproc::ruta_proceso(proceso)});
    }
    return responde(
        p, filas.como_lista(),
        [&] {
            if (filas.vacia()) {
                di_queja(di("no process has loaded '%1' (the name is case-sensitive)", p.argumentos[0]));
            }
            filas.pinta();
        },
        filas.vacia() ? no : hecho);
}

// Every process there is may have loaded a library: ending those must be asked for in so many words.
void i_exige_ejecutable(const peticion& p) {
    const std::wstring extension = en_minusculas(lumodir::cdir::extension_fichero(p.argumentos[0]));
    if (extension != L"exe" && extension != L"com" && !p.tiene("modules")) {
        throw fallo{
            di("'%1' is not the name of an executable; --modules ends every process that has loaded it",
               p.argumentos[0])};
    }
}

int i_kill(peticion& p) {
    if (sin_blancos(p.argumentos[0]).empty()) {
        throw fallo{di("the name is empty: refused, nothing is done")};
    }
    i_exige_ejecutable(p);
    const lumodir::taskproc::procesos hallados = i_procesos(p.argumentos[0]);
    std::vector<const Taskproc*> victimas;
    for (const Taskproc& proceso : hallados) {
        if (proceso.pid != GetCurrentProcessId()) {
            victimas.push_back(&proceso);
        }
    }
    if (victimas.empty()) {
        throw fallo{di("no other process has loaded '%1' (the name is case-sensitive)", p.argumentos[0])};
    }
    std::wstring cuales;
    for (const Taskproc* t : victimas) {
        cuales += (cuales.empty() ? L"" : L", ") + std::to_wstring(t->pid);
    }
    confirma(p, di("End %1 of '%2' (%3)?", plural(victimas.size(), "process", "processes"), p.argumentos[0],
                   cuales));
    respuesta_por_piezas terminados(p);
    bool todos = true;
    for (const Taskproc* t : victimas) {
        const bool terminado = !p.en_seco() && lumodir::taskproc::mata_proceso(*t);
        todos = todos && (terminado || p.en_seco());
        json fila = json::objeto().pon("pid", t->pid).pon("path", t->ruta).pon("done", terminado);
        if (p.en_seco()) {
            fila.pon("dry_run", true);
        }
        terminados.pieza(std::move(fila), [&] {
            if (!terminado && !p.en_seco()) {
                di_queja(di("process %1 cannot be ended", std::to_wstring(t->pid)));
                return;
            }
            salida()
                .escribe(p.en_seco() ? di("would end") : di("ended"),
                         p.en_seco() ? estilo::aviso : estilo::bueno)
                .linea(L" " + std::to_wstring(t->pid) + L" " + a_la_vista(t->ruta));
        });
    }
    return terminados.acaba(todos);
}

constexpr opcion opciones_tmp[] = {
    {.nombre = "ext", .valor = "E", .ayuda = "its extension (default tmp)"},
    {.nombre = "in", .valor = "DIR", .ayuda = "in this directory instead of the temporary one"},
    opcion_en_seco,
};
constexpr ejemplo ejemplos_tmp[] = {
    {.linea = "tmp --ext txt", .que_hace = "prints the path of a new, empty file"},
    {.linea = R"(tmp --in C:\data)", .que_hace = "with a name that was not taken"},
};
constexpr ejemplo ejemplos_where[] = {
    {.linea = "where notepad", .que_hace = "the path of notepad.exe"},
};
constexpr ejemplo ejemplos_short[] = {
    {.linea = R"(short "C:\Program Files")", .que_hace = R"(C:\PROGRA~1)"},
};
constexpr ejemplo ejemplos_long[] = {
    {.linea = R"(long C:\PROGRA~1)", .que_hace = R"(C:\Program Files)"},
};
constexpr ejemplo ejemplos_whereami[] = {
    {.linea = "whereami", .que_hace = "program, drive, current and temporary directory"},
};
constexpr ejemplo ejemplos_drives[] = {
    {.linea = "drives", .que_hace = "a table of all drives"},
};
constexpr ejemplo ejemplos_ps[] = {
    {.linea = "ps explorer.exe", .que_hace = "its processes"},
    {.linea = "ps user32.dll", .que_hace = "every process that has loaded it"},
};
constexpr opcion opciones_kill[] = {
    {.nombre = "modules",
     .ayuda = "also accept the name of a library: ends every process that has loaded it"},
    opcion_en_seco,
};
constexpr ejemplo ejemplos_kill[] = {
    {.linea = "kill notepad.exe", .que_hace = "asks, then ends them all"},
};
constexpr ejemplo ejemplos_about[] = {
    {.linea = "about --json", .que_hace = "for a bug report"},
};

constexpr orden tabla_sistema[] = {
    {.nombre = "tmp",
     .argumentos = "[--ext E] [--in DIR]",
     .resumen = "create an empty file with a new name",
     .opciones = opciones_tmp,
     .ejemplos = ejemplos_tmp,
     .ejecuta = i_tmp},
    {.nombre = "where",
     .argumentos = "NAME",
     .resumen = "find an executable in the directories of PATH",
     .detalle = "The name is looked for as it is, then with the endings of PATHEXT.",
     .minimo = 1,
     .maximo = 1,
     .ejemplos = ejemplos_where,
     .ejecuta = i_where},
    {.nombre = "short",
     .argumentos = "PATH...",
     .resumen = "the short (8.3) form of paths",
     .minimo = 1,
     .maximo = cuantos_sean,
     .ejemplos = ejemplos_short,
     .ejecuta = i_forma<lumodir::dame_path_corto>},
    {.nombre = "long",
     .argumentos = "PATH...",
     .resumen = "the long form of paths",
     .minimo = 1,
     .maximo = cuantos_sean,
     .ejemplos = ejemplos_long,
     .ejecuta = i_forma<lumodir::dame_path_largo>},
    {.nombre = "whereami",
     .resumen = "where this program and its directories are",
     .ejemplos = ejemplos_whereami,
     .ejecuta = i_whereami},
    {.nombre = "drives",
     .resumen = "the drives of this machine",
     .ejemplos = ejemplos_drives,
     .ejecuta = i_drives},
    {.nombre = "ps",
     .argumentos = "NAME",
     .resumen = "processes that have loaded an executable or a library",
     .detalle = "The name has to be exact, with its extension, and is case-sensitive.",
     .minimo = 1,
     .maximo = 1,
     .ejemplos = ejemplos_ps,
     .ejecuta = i_ps},
    {.nombre = "kill",
     .argumentos = "NAME",
     .resumen = "end the processes of an executable; asks first",
     .detalle = "The name has to be exact, with its extension, and is case-sensitive. This "
                "command itself is never ended.",
     .minimo = 1,
     .maximo = 1,
     .opciones = opciones_kill,
     .ejemplos = ejemplos_kill,
     .ejecuta = i_kill},
    {.nombre = "about",
     .resumen = "version, system, code page and language",
     .ejemplos = ejemplos_about,
     .ejecuta = i_about},
};

}  // namespace

const std::span<const orden> ordenes_sistema = tabla_sistema;

}  // namespace mando
