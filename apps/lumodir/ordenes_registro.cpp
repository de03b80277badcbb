// The registry: reg ls, reg get, reg set, reg rm.
#include "anfitrion.hpp"
#include "consola.hpp"
#include "ficheros.hpp"
#include "lumodir.hpp"
#include "ordenes.hpp"
#include "respuesta.hpp"
#include "textos.hpp"
#include "trabajo.hpp"

namespace mando {

namespace {

namespace lumoreg = lumodir::lumoreg;
using lumoreg::vista;

struct clave {
    lumoreg::raiz raiz;
    std::wstring ruta;  // below the root
    std::wstring entera;
};

struct raiz_con_nombre {
    std::string_view corto, largo;
    lumoreg::raiz raiz;
};
constexpr raiz_con_nombre raices[] = {
    {.corto = "HKCR", .largo = "HKEY_CLASSES_ROOT", .raiz = lumoreg::raiz::classes_root},
    {.corto = "HKCC", .largo = "HKEY_CURRENT_CONFIG", .raiz = lumoreg::raiz::current_config},
    {.corto = "HKCU", .largo = "HKEY_CURRENT_USER", .raiz = lumoreg::raiz::current_user},
    {.corto = "HKLM", .largo = "HKEY_LOCAL_MACHINE", .raiz = lumoreg::raiz::local_machine},
    {.corto = "HKU", .largo = "HKEY_USERS", .raiz = lumoreg::raiz::users},
};

clave i_clave(const std::wstring& texto) {
    const size_t fin = std::min(texto.find(L'\\'), texto.size());
    const std::wstring raiz = texto.substr(0, fin);
    std::wstring ruta = texto.substr(std::min(fin + 1, texto.size()));
    while (!ruta.empty() && ruta.back() == L'\\') {
        ruta.pop_back();
    }
    for (const raiz_con_nombre& r : raices) {
        if (iguales_sin_caja(raiz, ancho_de(r.corto)) || iguales_sin_caja(raiz, ancho_de(r.largo))) {
            return {r.raiz, ruta, ancho_de(r.corto) + (ruta.empty() ? L"" : L"\\" + ruta)};
        }
    }
    throw uso_incorrecto{di("'%1' does not begin with HKCR, HKCC, HKCU, HKLM or HKU", texto)};
}

// The view, or nothing for the usual order of views.
std::optional<vista> i_vista(const peticion& p) {
    const std::wstring texto = p.tiene("view") ? p.valor("view") : L"";
    if (!texto.empty() && texto != L"32" && texto != L"64") {
        throw uso_incorrecto{di("--view must be 32 or 64")};
    }
    return texto == L"64"   ? std::optional(vista::de_64_bits)
           : texto == L"32" ? std::optional(vista::de_32_bits)
                            : std::nullopt;
}

bool i_existe(const clave& c, std::optional<vista> cual) {
    return cual ? lumoreg::existe_clave_en_vista(*cual, c.raiz, c.ruta)
                : lumoreg::existe_clave(c.raiz, c.ruta);
}

void i_exige(const clave& c, std::optional<vista> cual) {
    if (!i_existe(c, cual)) {
        throw fallo{di("the key '%1' does not exist or may not be read", c.entera)};
    }
}

std::vector<std::wstring> i_subclaves(const clave& c, std::optional<vista> cual) {
    const lumodir::lista subclaves =
        cual ? lumoreg::dame_subclaves_ex(*cual, c.raiz, c.ruta) : lumoreg::dame_subclaves(c.raiz, c.ruta);
    return subclaves.vector();
}

int i_ls_clave(peticion& p) {
    const clave c = i_clave(p.argumentos[0]);
    const auto cual = i_vista(p);
    i_exige(c, cual);
    const std::vector<std::wstring> subclaves = i_subclaves(c, cual);
    respuesta valores(
        p, {{.clave = "name", .como = {.titulo = "value"}}, {.clave = "data", .como = {.titulo = "data"}}});
    const auto leidos = lumoreg::lee_valores_cadena_clave_ex(cual.value_or(vista::proceso), c.raiz, c.ruta);
    for (const lumoreg::valor& v : leidos.value_or(std::vector<lumoreg::valor>())) {
        std::wstring datos;
        for (const std::wstring& pieza : v.textos) {
            datos += (datos.empty() ? L"" : L" | ") + pieza;
        }
        valores.fila(
            {valor(v.nombre, v.nombre.empty() ? di("(default)") : v.nombre), valor(v.textos, datos)});
    }
    return responde(
        p, json::objeto().pon("key", c.entera).pon("subkeys", subclaves).pon("values", valores.como_lista()),
        [&] {
            for (const std::wstring& subclave : subclaves) {
                salida().linea(subclave + L"\\", estilo::tenue);
            }
            valores.pinta();
        });
}

int i_get(peticion& p) {
    const clave c = i_clave(p.argumentos[0]);
    const auto cual = i_vista(p);
    i_exige(c, cual);
    const std::wstring& nombre = p.argumentos[1];
    const std::optional<lumodir::cadena> dato = cual ? lumoreg::lee_cadena_ex(*cual, c.raiz, c.ruta, nombre)
                                                     : lumoreg::lee_cadena(c.raiz, c.ruta, nombre);
    if (!dato) {
        throw fallo{di("the key '%1' has no value '%2'", c.entera, nombre)};
    }
    return responde(p, json::objeto().pon("key", c.entera).pon("name", nombre).pon("data", dato->vista()),
                    [&] { salida().linea(dato->vista()); });
}

bool i_escribe_valor(const peticion& p, const clave& c, std::optional<vista> cual) {
    const std::wstring &nombre = p.argumentos[1], &dato = p.argumentos[2];
    if (p.tiene("dword")) {
        return lumoreg::establece_ulong(c.raiz, c.ruta, nombre,
                                        a_numero(dato, di("the value"), 0xFFFFFFFFul));
    }
    if (p.tiene("expand")) {
        return lumoreg::establece_cadena_expand(c.raiz, c.ruta, nombre, dato);
    }
    return cual ? lumoreg::establece_cadena_en_vista(*cual, c.raiz, c.ruta, nombre, dato)
                : lumoreg::establece_cadena(c.raiz, c.ruta, nombre, dato);
}

int i_set(peticion& p) {
    const clave c = i_clave(p.argumentos[0]);
    const auto cual = i_vista(p);
    if (p.argumentos.size() == 2) {
        throw uso_incorrecto{di("a value needs its data too; without a name the key alone is created")};
    }
    if ((p.tiene("dword") && p.tiene("expand")) || (cual && (p.tiene("dword") || p.tiene("expand")))) {
        throw uso_incorrecto{di("--dword, --expand and --view go one at a time")};
    }
    if (p.tiene("dword") && p.argumentos.size() == 3) {
        a_numero(p.argumentos[2], di("the value"), 0xFFFFFFFFul);  // before anything is created
    }
    const std::wstring que = L" " + c.entera + (p.argumentos.size() == 3 ? L" " + p.argumentos[1] : L"");
    if (p.en_seco()) {
        return responde(p, json::objeto().pon("key", c.entera).pon("done", false).pon("dry_run", true),
                        [&] { salida().escribe(di("would set"), estilo::aviso).linea(que); });
    }
    const bool creada = i_existe(c, cual) || (cual ? lumoreg::crea_clave_en_vista(*cual, c.raiz, c.ruta)
                                                   : lumoreg::crea_clave(c.raiz, c.ruta));
    if (!creada) {
        throw fallo{di("the key '%1' cannot be created", c.entera)};
    }
    if (p.argumentos.size() == 3 && !i_escribe_valor(p, c, cual)) {
        throw fallo{di("the value '%1' of '%2' cannot be written", p.argumentos[1], c.entera)};
    }
    return responde(p, json::objeto().pon("key", c.entera).pon("done", true),
                    [&] { salida().escribe(di("set"), estilo::bueno).linea(que); });
}

size_t i_cuenta_subclaves(const clave& c) {
    size_t total = 0;
    for (const std::wstring& nombre : i_subclaves(c, std::nullopt)) {
        total += 1 + i_cuenta_subclaves({c.raiz, c.ruta + L"\\" + nombre, c.entera + L"\\" + nombre});
    }
    return total;
}

// One pass of the library leaves every second subkey; passes are made as long as each deletes something.
size_t i_borra_en_pasadas(const clave& c, const std::wstring& padre, const std::wstring& nombre) {
    size_t pasadas = 0;
    size_t antes = static_cast<size_t>(-1);
    for (size_t quedan = i_cuenta_subclaves(c); i_existe(c, std::nullopt) && quedan < antes;
         quedan = i_existe(c, std::nullopt) ? i_cuenta_subclaves(c) : 0) {
        antes = quedan;
        lumoreg::borra_clave(c.raiz, padre, nombre);
        ++pasadas;
    }
    return pasadas;
}

int i_en_seco(const peticion& p, json que, const std::wstring& en_palabras) {
    return responde(p, que.pon("done", false).pon("dry_run", true), [&] {
        salida().escribe(di("would delete"), estilo::aviso).linea(L" " + a_la_vista(en_palabras));
    });
}

int i_rm_clave(peticion& p, const clave& c) {
    const size_t corte = c.ruta.rfind(L'\\');
    if (corte == c.ruta.npos) {
        throw fallo{di("'%1' is a root key or directly below one: refused, nothing is done", c.entera)};
    }
    size_t subclaves = 0;
    con_progreso([&] { subclaves = i_cuenta_subclaves(c); },
                 [&](unsigned segundos) {
                     return di("counting the subkeys of %1, %2 s", c.entera, std::to_wstring(segundos));
                 });
    confirma(p, di("Delete the key '%1' with %2?", c.entera, plural(subclaves, "subkey", "subkeys")));
    if (p.en_seco()) {
        return i_en_seco(p, json::objeto().pon("key", c.entera).pon("subkeys", subclaves),
                         c.entera + L": " + plural(subclaves, "subkey", "subkeys"));
    }
    size_t pasadas = 0;
    const despedida al_acabar([] { return di("stopped; some subkeys may be gone already"); });
    con_progreso(
        [&] { pasadas = i_borra_en_pasadas(c, c.ruta.substr(0, corte), c.ruta.substr(corte + 1)); },
        [&](unsigned segundos) { return di("deleting %1, %2 s", c.entera, std::to_wstring(segundos)); });
    const bool queda = i_existe(c, std::nullopt);
    const size_t quedan = queda ? i_cuenta_subclaves(c) : 0;
    return responde(
        p,
        json::objeto()
            .pon("key", c.entera)
            .pon("done", !queda)
            .pon("subkeys", subclaves)
            .pon("passes", pasadas)
            .pon("left", quedan),
        [&] {
            if (queda) {
                di_queja(di("the key '%1' is not deleted; left: %2", c.entera,
                            plural(quedan, "subkey", "subkeys")));
            } else {
                salida().escribe(di("deleted"), estilo::bueno).linea(L" " + c.entera);
            }
        },
        queda ? no : hecho);
}

int i_rm_valor(peticion& p, const clave& c) {
    const std::wstring& nombre = p.argumentos[1];
    const auto esta = [&] { return lumoreg::lee_cadena(c.raiz, c.ruta, nombre).has_value(); };
    if (!esta()) {
        throw fallo{di("the key '%1' has no value '%2'", c.entera, nombre)};
    }
    const json objeto = json::objeto().pon("key", c.entera).pon("name", nombre);
    if (p.en_seco()) {
        return i_en_seco(p, objeto, c.entera + L" " + nombre);
    }
    confirma(p, di("Delete the value '%1' of '%2'?", nombre, c.entera));
    lumoreg::borra_valor_clave(c.raiz, c.ruta, nombre);
    if (esta()) {
        throw fallo{di("the value '%1' of '%2' is not deleted", nombre, c.entera)};
    }
    return responde(p, json(objeto).pon("done", true), [&] {
        salida().escribe(di("deleted"), estilo::bueno).linea(L" " + c.entera + L" " + nombre);
    });
}

int i_rm_clave(peticion& p) {
    const clave c = i_clave(p.argumentos[0]);
    i_exige(c, std::nullopt);
    return p.argumentos.size() == 2 ? i_rm_valor(p, c) : i_rm_clave(p, c);
}

constexpr opcion opciones_leer[] = {
    {.nombre = "view", .valor = "V", .ayuda = "only the 32-bit or the 64-bit view (32, 64)"},
};
constexpr opcion opciones_set[] = {
    {.nombre = "dword", .ayuda = "the data is a 32-bit number"},
    {.nombre = "expand", .ayuda = "the data contains references to environment variables (%PATH%)"},
    {.nombre = "view", .valor = "V", .ayuda = "in the 32-bit or the 64-bit view (32, 64)"},
    opcion_en_seco,
};
constexpr opcion opciones_rm_clave[] = {
    opcion_en_seco,
};
constexpr ejemplo ejemplos_ls_clave[] = {
    {.linea = R"(reg ls "HKCU\Control Panel")", .que_hace = "subkeys and string values"},
};
constexpr ejemplo ejemplos_get[] = {
    {.linea = R"(reg get "HKCU\Control Panel\International" LocaleName)", .que_hace = "one value"},
};
constexpr ejemplo ejemplos_set[] = {
    {.linea = R"(reg set HKCU\Software\Mine Colour blue)", .que_hace = "a string; the key is created"},
    {.linea = R"(reg set HKCU\Software\Mine Size 12 --dword)", .que_hace = "a number"},
    {.linea = R"(reg set HKCU\Software\Mine\Deep)", .que_hace = "the key alone"},
};
constexpr ejemplo ejemplos_rm_clave[] = {
    {.linea = R"(reg rm HKCU\Software\Mine Colour)", .que_hace = "one value"},
    {.linea = R"(reg rm HKCU\Software\Mine)", .que_hace = "the key with everything below it"},
};

constexpr orden tabla_registro[] = {
    {.nombre = "reg ls",
     .argumentos = "KEY",
     .resumen = "subkeys and string values of a registry key",
     .detalle = "KEY begins with HKCR, HKCC, HKCU, HKLM or HKU. Only string values are shown.",
     .minimo = 1,
     .maximo = 1,
     .opciones = opciones_leer,
     .ejemplos = ejemplos_ls_clave,
     .ejecuta = i_ls_clave},
    {.nombre = "reg get",
     .argumentos = "KEY NAME",
     .resumen = "a value as a string",
     .detalle = "The type of the value is not looked at: its bytes are taken as text. \"\" is the\n"
                "default value.",
     .minimo = 2,
     .maximo = 2,
     .opciones = opciones_leer,
     .ejemplos = ejemplos_get,
     .ejecuta = i_get},
    {.nombre = "reg set",
     .argumentos = "KEY [NAME DATA]",
     .resumen = "write a value, creating the key",
     .minimo = 1,
     .maximo = 3,
     .opciones = opciones_set,
     .ejemplos = ejemplos_set,
     .ejecuta = i_set},
    {.nombre = "reg rm",
     .argumentos = "KEY [NAME]",
     .resumen = "delete a value, or a key with its subkeys; asks first",
     .detalle = "Root keys and the keys directly below them are refused.",
     .minimo = 1,
     .maximo = 2,
     .opciones = opciones_rm_clave,
     .ejemplos = ejemplos_rm_clave,
     .ejecuta = i_rm_clave},
};

}  // namespace

const std::span<const orden> ordenes_registro = tabla_registro;

}  // namespace mando
