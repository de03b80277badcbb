// The system: tmp, where, short, long, whereami, drives, ps, kill, about.
#include <algorithm>
#include <cstdlib>

#include "anfitrion.hpp"
#include "cdir_ficheros.h"
#include "cdir_rutas.h"
#include "comodines.hpp"
#include "companions/lumostr.h"
#include "companions/msglocal.h"
#include "consola.hpp"
#include "directorios.hpp"
#include "discos.h"
#include "ficheros.hpp"
#include "info.h"
#include "lumodir.h"
#include "ordenes.hpp"
#include "sistema_windows.hpp"
#include "tabla.hpp"
#include "taskproc.h"
#include "textos.hpp"
#include "trabajo.hpp"
#include "wine.h"

namespace mando {

namespace {

json i_json_de_ficha(const ficha& datos) {
    json objeto = json::objeto();
    for (const dato& d : datos) {
        std::string clave(d.nombre.ingles());
        std::replace(clave.begin(), clave.end(), ' ', '_');
        objeto.pon(clave, d.valor.texto);
    }
    return objeto;
}

// ---- tmp ----

int i_tmp(peticion& p) {
    const wchar_t* extension = p.valor("ext");
    std::wstring ruta;
    if (p.tiene("in")) {
        comprueba_directorio(p.valor("in"));
    }
    if (p.en_seco()) {
        const std::wstring donde = p.tiene("in") ? p.valor("in") : toma(lumodir_dameDirectorioTemporal());
        if (p.en_json) {
            escribe_json(json::objeto().pon("path", json()).pon("directory", donde).pon("dry_run", true));
        } else {
            salida().escribe(di("would create"), estilo::aviso).linea(di(" a file in %1", a_la_vista(donde)));
        }
        return hecho;
    }
    if (p.tiene("in")) {
        ruta = toma(lumodir_creaFicheroUnicoEnDirectorio(p.valor("in"), extension ? extension : L"tmp"));
    } else {
        const std::wstring limpia = !extension ? L"tmp" : extension[0] == L'.' ? extension + 1 : extension;
        ruta = toma(lumodir_creaFicheroTemporalConExt(limpia.c_str()));
    }
    if (ruta.empty() || que_hay_en(ruta) == clase_de_entrada::ninguna) {
        throw fallo{di("no temporary file could be created")};
    }
    if (p.en_json) {
        escribe_json(json::objeto().pon("path", ruta));
    } else {
        salida().linea(std::wstring_view(ruta));
    }
    return hecho;
}

// ---- where ----

// The endings that the system runs a name with when it has none of them.
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
    for (const std::wstring& candidato : i_candidatos(p.argumentos[0])) {
        ArrCADENA_u* rutas = nullptr;
        lumodir_busca_ejecutables_del_path(candidato.c_str(), &rutas);
        for (std::wstring& ruta : toma(rutas)) {
            if (que_hay_en(ruta) == clase_de_entrada::fichero) {
                hallados.push_back(std::move(ruta));
            }
        }
    }
    if (p.en_json) {
        escribe_json(json::objeto().pon("name", p.argumentos[0]).pon("paths", hallados));
    } else if (hallados.empty()) {
        throw fallo{di("'%1' is in no directory of PATH", p.argumentos[0])};
    } else {
        for (const std::wstring& ruta : hallados) {
            salida().linea(std::wstring_view(ruta));
        }
    }
    return hallados.empty() ? no : hecho;
}

// ---- short, long ----

template <wchar_t* (*convierte)(const wchar_t*)>
int i_forma(peticion& p) {
    json lista = json::lista();
    bool todas = true;
    for (const std::wstring& ruta : rutas_de(p, que_valen::todo).rutas) {
        const std::wstring forma = toma(convierte(ruta.c_str()));
        const bool existe = que_hay_en(ruta) != clase_de_entrada::ninguna;
        todas = todas && existe;
        if (p.en_json) {
            lista.agrega(json::objeto().pon("path", ruta).pon("result", forma).pon("exists", existe));
            continue;
        }
        if (!existe) {
            errores()
                .escribe("lumodir: ", estilo::aviso)
                .linea(di("'%1' does not exist and stays as it is", ruta));
        }
        salida().linea(std::wstring_view(forma));
    }
    if (p.en_json) {
        escribe_json(lista);
    }
    return todas ? hecho : no;
}

// ---- whereami, about ----

int i_muestra_ficha(const peticion& p, const ficha& datos) {
    if (p.en_json) {
        escribe_json(i_json_de_ficha(datos));
    } else {
        pinta_ficha(salida(), datos);
    }
    return hecho;
}

int i_whereami(peticion& p) {
    return i_muestra_ficha(p, {{"program", toma(lumodir_dame_path_completo_del_programa_UNICODE())},
                               {"program drive", std::wstring(cdir_disco_de_programa_UNICODE())},
                               {"current directory", toma(cdir_obtener_path_actual_UNICODE())},
                               {"temporary directory", toma(lumodir_dameDirectorioTemporal())}});
}

// What the system says it is, not what it says to programs of older times.
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
    const bool en_wine = wine_estamos_en_wine() == CIERTO;
    const unsigned long ranura = msglocal_dame_idioma();
    std::wstring dll(MAX_PATH, L'\0');
    dll.resize(GetModuleFileNameW(GetModuleHandleW(L"lumodir.dll"), dll.data(), MAX_PATH));
    const std::wstring sistema =
        en_wine ? L"Wine" + i_version_de_wine() + L" (Windows " + i_version_de_windows() + L")"
                : L"Windows " + i_version_de_windows();
    if (p.en_json) {
        escribe_json(json::objeto()
                         .pon("version", LUMODIR_VERSION)
                         .pon("library", dll)
                         .pon("system", sistema)
                         .pon("code_page", static_cast<unsigned long>(GetACP()))
                         .pon("language", nombre_de_idioma(ranura))
                         .pon("language_slot", ranura));
        return hecho;
    }
    pinta_ficha(salida(), {{"version", ancho_de(LUMODIR_VERSION)},
                           {"library", dll},
                           {"system", sistema},
                           {"code page", std::to_wstring(GetACP())},
                           {"language", nombre_de_idioma(ranura) + L" (" + std::to_wstring(ranura) + L")"}});
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

struct unidad {
    frase tipo;
    std::wstring letra, nombre, directorio;
    bool es_local, es_subst;
};

std::vector<unidad> i_unidades() {
    std::vector<unidad> unidades;
    InfoTabla tabla_de_discos{};
    info_GetDriveInfoSystem(&tabla_de_discos);
    for (unsigned short i = 0; i < tabla_de_discos.numDiscos; ++i) {
        const InfoDisco& d = tabla_de_discos.discos[i];
        const wchar_t letra = static_cast<wchar_t>(L'A' + d.disco);
        unidad u{.tipo = i_tipo(d.tipo),
                 .letra = toma(info_GetTxtDrive(&d)),
                 .nombre = d.pathNetwork ? d.pathNetwork : L"",
                 .directorio = toma(info_GetActualDirectorio_compatible_chdir(d.disco + 1, nullptr, 0)),
                 .es_local = discos_es_unidad_local(letra) == CIERTO,
                 .es_subst = discos_es_unidad_subst(letra) == CIERTO};
        if (d.tipo == INFO_TIPO_FIJO || d.tipo == INFO_TIPO_EXTRAIBLE) {
            u.nombre = toma(discos_nombre_volumen(d.disco));
        }
        unidades.push_back(std::move(u));
    }
    info_LiberaTabla(&tabla_de_discos);
    return unidades;
}

int i_drives(peticion& p) {
    json lista = json::lista();
    tabla t({{"drive"}, {"type"}, {"name"}, {"local"}, {"subst"}, {"current directory", false, true}});
    std::vector<unidad> unidades;
    con_progreso([&] { unidades = i_unidades(); },
                 [](unsigned segundos) { return di("asking the drives, %1 s", std::to_wstring(segundos)); });
    for (const unidad& u : unidades) {
        if (p.en_json) {
            lista.agrega(json::objeto()
                             .pon("drive", u.letra)
                             .pon("type", u.tipo.ingles())
                             .pon("name", u.nombre)
                             .pon("local", u.es_local)
                             .pon("subst", u.es_subst)
                             .pon("current_directory", u.directorio));
        } else {
            t.fila({celda(u.letra, estilo::bueno), di(u.tipo), u.nombre,
                    di(u.es_local ? frase("yes") : frase("no")), di(u.es_subst ? frase("yes") : frase("no")),
                    u.directorio});
        }
    }
    p.en_json ? escribe_json(lista) : t.pinta(salida());
    return hecho;
}

// ---- ps, kill ----

class procesos {
public:
    explicit procesos(const std::wstring& modulo) {
        con_progreso([&] { taskproc_busca_proceso_abierto(modulo.c_str(), &lista_); },
                     [](unsigned segundos) {
                         return di("looking at the processes, %1 s", std::to_wstring(segundos));
                     });
    }
    ~procesos() {
        if (lista_) {
            arr_DestruyeEstructurasConTipo(
                &lista_, reinterpret_cast<ArrDestruyeRegistro>(reinterpret_cast<void*>(taskproc_destruye)));
        }
    }
    procesos(const procesos&) = delete;
    procesos& operator=(const procesos&) = delete;

    std::vector<const Taskproc*> todos() const {
        std::vector<const Taskproc*> resultado;
        for (unsigned long i = 0; lista_ && i < arr_NumElemsPuntero(lista_); ++i) {
            resultado.push_back(static_cast<const Taskproc*>(arr_GetPunteroConTipo(lista_, i)));
        }
        return resultado;
    }

private:
    ArrPunteroConTipo* lista_ = nullptr;
};

int i_ps(peticion& p) {
    const procesos hallados(p.argumentos[0]);
    json lista = json::lista();
    tabla t({{"pid", true}, {"module"}, {"path", false, true}});
    for (const Taskproc* proceso : hallados.todos()) {
        if (p.en_json) {
            lista.agrega(json::objeto()
                             .pon("pid", proceso->pid)
                             .pon("module", proceso->modulo)
                             .pon("path", taskproc_ruta_proceso(proceso)));
        } else {
            t.fila({std::to_wstring(proceso->pid), std::wstring(proceso->modulo),
                    std::wstring(taskproc_ruta_proceso(proceso))});
        }
    }
    const bool ninguno = hallados.todos().empty();
    if (p.en_json) {
        escribe_json(lista);
    } else if (ninguno) {
        throw fallo{di("no process has loaded '%1' (the name is case-sensitive)", p.argumentos[0])};
    } else {
        t.pinta(salida());
    }
    return ninguno ? no : hecho;
}

// A library may be loaded by every process there is: it must be asked for in so many words.
void i_exige_ejecutable(const peticion& p) {
    const std::wstring extension =
        en_minusculas(toma(cdir_extension_fichero_UNICODE(p.argumentos[0].c_str())));
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
    const procesos hallados(p.argumentos[0]);
    std::vector<const Taskproc*> victimas = hallados.todos();
    std::erase_if(victimas, [](const Taskproc* t) { return t->pid == GetCurrentProcessId(); });
    if (victimas.empty()) {
        throw fallo{di("no other process has loaded '%1' (the name is case-sensitive)", p.argumentos[0])};
    }
    std::wstring cuales;
    for (const Taskproc* t : victimas) {
        cuales += (cuales.empty() ? L"" : L", ") + std::to_wstring(t->pid);
    }
    confirma(p, di("End %1 of '%2' (%3)?", plural(victimas.size(), "process", "processes"), p.argumentos[0],
                   cuales));
    json lista = json::lista();
    bool todos = true;
    for (const Taskproc* t : victimas) {
        const bool terminado = !p.en_seco() && taskproc_mata_proceso(t) == CIERTO;
        todos = todos && (terminado || p.en_seco());
        if (p.en_json) {
            json fila = json::objeto().pon("pid", t->pid).pon("path", t->ruta).pon("done", terminado);
            if (p.en_seco()) {
                fila.pon("dry_run", true);
            }
            lista.agrega(std::move(fila));
        } else if (p.en_seco()) {
            salida()
                .escribe(di("would end"), estilo::aviso)
                .linea(L" " + std::to_wstring(t->pid) + L" " + a_la_vista(t->ruta));
        } else if (terminado) {
            salida()
                .escribe(di("ended"), estilo::bueno)
                .linea(L" " + std::to_wstring(t->pid) + L" " + t->ruta);
        } else {
            errores()
                .escribe("lumodir: ", estilo::malo)
                .linea(di("process %1 cannot be ended", std::to_wstring(t->pid)));
        }
    }
    if (p.en_json) {
        escribe_json(lista);
    }
    return todos ? hecho : no;
}

constexpr opcion opciones_tmp[] = {{"ext", "E", "its extension (default tmp)"},
                                   {"in", "DIR", "in this directory instead of the temporary one"},
                                   opcion_en_seco};
constexpr ejemplo ejemplos_tmp[] = {{"tmp --ext txt", "prints the path of a new, empty file"},
                                    {R"(tmp --in C:\data)", "with a name that was not taken"}};
constexpr ejemplo ejemplos_where[] = {{"where notepad", "the path of notepad.exe"}};
constexpr ejemplo ejemplos_short[] = {{R"(short "C:\Program Files")", R"(C:\PROGRA~1)"}};
constexpr ejemplo ejemplos_long[] = {{R"(long C:\PROGRA~1)", R"(C:\Program Files)"}};
constexpr ejemplo ejemplos_whereami[] = {{"whereami", "program, drive, current and temporary directory"}};
constexpr ejemplo ejemplos_drives[] = {{"drives", "a table of all drives"}};
constexpr ejemplo ejemplos_ps[] = {{"ps explorer.exe", "its processes"},
                                   {"ps user32.dll", "every process that has loaded it"}};
constexpr opcion opciones_kill[] = {
    {"modules", "", "also accept the name of a library: ends every process that has loaded it"},
    opcion_en_seco};
constexpr ejemplo ejemplos_kill[] = {{"kill notepad.exe", "asks, then ends them all"}};
constexpr ejemplo ejemplos_about[] = {{"about --json", "for a bug report"}};

constexpr orden ordenes[] = {
    {"tmp", "[--ext E] [--in DIR]", "create an empty file with a new name", "", 0, 0, opciones_tmp,
     ejemplos_tmp, i_tmp},
    {"where",
     "NAME",
     "find an executable in the directories of PATH",
     "The name is looked for as it is, then with the endings of PATHEXT.",
     1,
     1,
     {},
     ejemplos_where,
     i_where},
    {"short",
     "PATH...",
     "the short (8.3) form of paths",
     "",
     1,
     cuantos_sean,
     {},
     ejemplos_short,
     i_forma<lumodir_dame_path_corto_UNICODE>},
    {"long",
     "PATH...",
     "the long form of paths",
     "",
     1,
     cuantos_sean,
     {},
     ejemplos_long,
     i_forma<lumodir_dame_path_largo_UNICODE>},
    {"whereami",
     "",
     "where this program and its directories are",
     "",
     0,
     0,
     {},
     ejemplos_whereami,
     i_whereami},
    {"drives", "", "the drives of this machine", "", 0, 0, {}, ejemplos_drives, i_drives},
    {"ps",
     "NAME",
     "processes that have loaded an executable or a library",
     "The name has to be exact, with its extension, and is case-sensitive.",
     1,
     1,
     {},
     ejemplos_ps,
     i_ps},
    {"kill", "NAME", "end the processes of an executable; asks first",
     "The name has to be exact, with its extension, and is case-sensitive. This "
     "command itself is never ended.",
     1, 1, opciones_kill, ejemplos_kill, i_kill},
    {"about", "", "version, system, code page and language", "", 0, 0, {}, ejemplos_about, i_about},
};

}  // namespace

const std::span<const orden> ordenes_sistema = ordenes;

}  // namespace mando
