// The registry: reg ls, reg get, reg set, reg rm.
#include "anfitrion.hpp"
#include "consola.hpp"
#include "ficheros.hpp"
#include "lumoreg.h"
#include "ordenes.hpp"
#include "tabla.hpp"
#include "textos.hpp"
#include "trabajo.hpp"

namespace mando {

namespace {

struct clave {
    unsigned long raiz;
    std::wstring ruta;  // below the root
    std::wstring entera;
};

struct raiz_con_nombre {
    std::string_view corto, largo;
    unsigned long indice;
};
constexpr raiz_con_nombre raices[] = {
    {"HKCR", "HKEY_CLASSES_ROOT", LUMOREG_RAIZ_CLASSES_ROOT},
    {"HKCC", "HKEY_CURRENT_CONFIG", LUMOREG_RAIZ_CURRENT_CONFIG},
    {"HKCU", "HKEY_CURRENT_USER", LUMOREG_RAIZ_CURRENT_USER},
    {"HKLM", "HKEY_LOCAL_MACHINE", LUMOREG_RAIZ_LOCAL_MACHINE},
    {"HKU", "HKEY_USERS", LUMOREG_RAIZ_USERS},
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
            return {r.indice, ruta, ancho_de(r.corto) + (ruta.empty() ? L"" : L"\\" + ruta)};
        }
    }
    throw uso_incorrecto{di("'%1' does not begin with HKCR, HKCC, HKCU, HKLM or HKU", texto)};
}

// The view, or nothing for the usual order of views.
std::optional<unsigned long> i_vista(const peticion& p) {
    const std::wstring texto = p.tiene("view") ? p.valor("view") : L"";
    if (!texto.empty() && texto != L"32" && texto != L"64") {
        throw uso_incorrecto{di("--view must be 32 or 64")};
    }
    return texto == L"64"   ? std::optional<unsigned long>(LUMOREG_VISTA_64BITS)
           : texto == L"32" ? std::optional<unsigned long>(LUMOREG_VISTA_32BITS)
                            : std::nullopt;
}

bool i_existe(const clave& c, std::optional<unsigned long> vista) {
    return (vista ? lumoreg_existe_clave_en_vista_u(*vista, c.raiz, c.ruta.c_str())
                  : lumoreg_existe_clave_u(c.raiz, c.ruta.c_str())) == CIERTO;
}

void i_exige(const clave& c, std::optional<unsigned long> vista) {
    if (!i_existe(c, vista)) {
        throw fallo{di("the key '%1' does not exist or may not be read", c.entera)};
    }
}

std::vector<std::wstring> i_subclaves(const clave& c, std::optional<unsigned long> vista) {
    ArrCADENA_u* lista = arr_CreaCADENA_u(0);
    vista ? lumoreg_dame_subclaves_ex_u(*vista, c.raiz, c.ruta.c_str(), lista)
          : lumoreg_dame_subclaves_u(c.raiz, c.ruta.c_str(), lista);
    return toma(lista);
}

struct valor_de_clave {
    std::wstring nombre;
    std::vector<std::wstring> piezas;
};

std::vector<valor_de_clave> i_valores(const clave& c, std::optional<unsigned long> vista) {
    std::vector<valor_de_clave> resultado;
    ArrCADENA_u* nombres = nullptr;
    ArrPunteroConTipo* datos = nullptr;
    const unsigned long cual = vista.value_or(LUMOREG_VISTA_PROCESO);
    if (lumoreg_lee_valores_cadena_clave_ex_u(cual, c.raiz, c.ruta.c_str(), &nombres, &datos) != CIERTO) {
        return resultado;
    }
    for (unsigned long i = 0; i < arr_NumElemsCADENA_u(nombres); ++i) {
        valor_de_clave v{arr_GetCADENA_u(nombres, i), {}};
        const auto* piezas = static_cast<const ArrCADENA_u*>(arr_GetPunteroConTipo(datos, i));
        for (unsigned long j = 0; j < arr_NumElemsCADENA_u(piezas); ++j) {
            v.piezas.emplace_back(arr_GetCADENA_u(piezas, j));
        }
        resultado.push_back(std::move(v));
    }
    arr_DestruyeCADENA_u(&nombres);
    arr_DestruyeEstructurasConTipo(
        &datos, reinterpret_cast<ArrDestruyeRegistro>(reinterpret_cast<void*>(arr_DestruyeCADENA_u)));
    return resultado;
}

int i_ls(peticion& p) {
    const clave c = i_clave(p.argumentos[0]);
    const auto vista = i_vista(p);
    i_exige(c, vista);
    const std::vector<std::wstring> subclaves = i_subclaves(c, vista);
    const std::vector<valor_de_clave> valores = i_valores(c, vista);
    if (p.en_json) {
        json lista = json::lista();
        for (const valor_de_clave& v : valores) {
            lista.agrega(json::objeto().pon("name", v.nombre).pon("data", v.piezas));
        }
        escribe_json(
            json::objeto().pon("key", c.entera).pon("subkeys", subclaves).pon("values", std::move(lista)));
        return hecho;
    }
    for (const std::wstring& subclave : subclaves) {
        salida().linea(subclave + L"\\", estilo::tenue);
    }
    tabla t({{"value"}, {"data"}});
    for (const valor_de_clave& v : valores) {
        std::wstring datos;
        for (const std::wstring& pieza : v.piezas) {
            datos += (datos.empty() ? L"" : L" | ") + pieza;
        }
        t.fila({v.nombre.empty() ? di("(default)") : v.nombre, datos});
    }
    if (!t.vacia()) {
        t.pinta(salida());
    }
    return hecho;
}

int i_get(peticion& p) {
    const clave c = i_clave(p.argumentos[0]);
    const auto vista = i_vista(p);
    i_exige(c, vista);
    wchar_t* contenido = nullptr;
    const wchar_t* nombre = p.argumentos[1].c_str();
    const bool leido = (vista ? lumoreg_lee_cadena_ex_u(*vista, c.raiz, c.ruta.c_str(), nombre, &contenido)
                              : lumoreg_lee_cadena_u(c.raiz, c.ruta.c_str(), nombre, &contenido)) == CIERTO;
    const std::wstring texto = toma(contenido);
    if (!leido) {
        throw fallo{di("the key '%1' has no value '%2'", c.entera, p.argumentos[1])};
    }
    if (p.en_json) {
        escribe_json(json::objeto().pon("key", c.entera).pon("name", p.argumentos[1]).pon("data", texto));
    } else {
        salida().linea(std::wstring_view(texto));
    }
    return hecho;
}

bool i_escribe_valor(const peticion& p, const clave& c, std::optional<unsigned long> vista) {
    const wchar_t *ruta = c.ruta.c_str(), *nombre = p.argumentos[1].c_str(), *dato = p.argumentos[2].c_str();
    if (p.tiene("dword")) {
        return lumoreg_establece_ulong_u(c.raiz, ruta, nombre,
                                         a_numero(dato, di("the value"), 0xFFFFFFFFul)) == CIERTO;
    }
    if (p.tiene("expand")) {
        return lumoreg_establece_cadena_expand_u(c.raiz, ruta, nombre, dato) == CIERTO;
    }
    return (vista ? lumoreg_establece_cadena_en_vista_u(*vista, c.raiz, ruta, nombre, dato)
                  : lumoreg_establece_cadena_u(c.raiz, ruta, nombre, dato)) == CIERTO;
}

int i_set(peticion& p) {
    const clave c = i_clave(p.argumentos[0]);
    const auto vista = i_vista(p);
    if (p.argumentos.size() == 2) {
        throw uso_incorrecto{di("a value needs its data too; without a name the key alone is created")};
    }
    if ((p.tiene("dword") && p.tiene("expand")) || (vista && (p.tiene("dword") || p.tiene("expand")))) {
        throw uso_incorrecto{di("--dword, --expand and --view go one at a time")};
    }
    if (p.tiene("dword") && p.argumentos.size() == 3) {
        a_numero(p.argumentos[2], di("the value"), 0xFFFFFFFFul);  // before anything is created
    }
    if (p.en_seco()) {
        if (p.en_json) {
            escribe_json(json::objeto().pon("key", c.entera).pon("done", false).pon("dry_run", true));
        } else {
            salida()
                .escribe(di("would set"), estilo::aviso)
                .linea(L" " + c.entera + (p.argumentos.size() == 3 ? L" " + p.argumentos[1] : L""));
        }
        return hecho;
    }
    const bool creada =
        i_existe(c, vista) || (vista ? lumoreg_crea_clave_en_vista_u(*vista, c.raiz, c.ruta.c_str())
                                     : lumoreg_crea_clave_u(c.raiz, c.ruta.c_str())) == CIERTO;
    if (!creada) {
        throw fallo{di("the key '%1' cannot be created", c.entera)};
    }
    if (p.argumentos.size() == 3 && !i_escribe_valor(p, c, vista)) {
        throw fallo{di("the value '%1' of '%2' cannot be written", p.argumentos[1], c.entera)};
    }
    if (p.en_json) {
        escribe_json(json::objeto().pon("key", c.entera).pon("done", true));
    } else {
        salida()
            .escribe(di("set"), estilo::bueno)
            .linea(L" " + c.entera + (p.argumentos.size() == 3 ? L" " + p.argumentos[1] : L""));
    }
    return hecho;
}

size_t i_cuenta_subclaves(const clave& c) {
    size_t total = 0;
    for (const std::wstring& nombre : i_subclaves(c, std::nullopt)) {
        total += 1 + i_cuenta_subclaves({c.raiz, c.ruta + L"\\" + nombre, c.entera + L"\\" + nombre});
    }
    return total;
}

// One pass of the library leaves every second subkey; passes are made as long as they get anywhere.
size_t i_borra_en_pasadas(const clave& c, const std::wstring& padre, const std::wstring& nombre) {
    size_t pasadas = 0;
    size_t antes = static_cast<size_t>(-1);
    for (size_t quedan = i_cuenta_subclaves(c); i_existe(c, std::nullopt) && quedan < antes;
         quedan = i_existe(c, std::nullopt) ? i_cuenta_subclaves(c) : 0) {
        antes = quedan;
        lumoreg_borra_clave_u(c.raiz, padre.c_str(), nombre.c_str());
        ++pasadas;
    }
    return pasadas;
}

int i_en_seco(const peticion& p, json que, const std::wstring& en_palabras) {
    if (p.en_json) {
        escribe_json(que.pon("done", false).pon("dry_run", true));
    } else {
        salida().escribe(di("would delete"), estilo::aviso).linea(L" " + a_la_vista(en_palabras));
    }
    return hecho;
}

int i_rm_clave(peticion& p, const clave& c) {
    const size_t corte = c.ruta.rfind(L'\\');
    if (corte == c.ruta.npos) {
        throw fallo{di("'%1' is a root key or directly below one: refused, nothing is done", c.entera)};
    }
    const size_t subclaves = i_cuenta_subclaves(c);
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
    if (p.en_json) {
        escribe_json(json::objeto()
                         .pon("key", c.entera)
                         .pon("done", !queda)
                         .pon("subkeys", subclaves)
                         .pon("passes", pasadas)
                         .pon("left", queda ? i_cuenta_subclaves(c) : 0));
    } else if (queda) {
        throw fallo{di("the key '%1' is not deleted; left: %2", c.entera,
                       plural(i_cuenta_subclaves(c), "subkey", "subkeys"))};
    } else {
        salida().escribe(di("deleted"), estilo::bueno).linea(L" " + c.entera);
    }
    return queda ? no : hecho;
}

int i_rm_valor(peticion& p, const clave& c) {
    const wchar_t* nombre = p.argumentos[1].c_str();
    wchar_t* contenido = nullptr;
    const bool estaba = lumoreg_lee_cadena_u(c.raiz, c.ruta.c_str(), nombre, &contenido) == CIERTO;
    toma(contenido);
    if (!estaba) {
        throw fallo{di("the key '%1' has no value '%2'", c.entera, p.argumentos[1])};
    }
    if (p.en_seco()) {
        return i_en_seco(p, json::objeto().pon("key", c.entera).pon("name", p.argumentos[1]),
                         c.entera + L" " + p.argumentos[1]);
    }
    confirma(p, di("Delete the value '%1' of '%2'?", p.argumentos[1], c.entera));
    lumoreg_borra_valor_clave_u(c.raiz, c.ruta.c_str(), nombre);
    contenido = nullptr;
    const bool queda = lumoreg_lee_cadena_u(c.raiz, c.ruta.c_str(), nombre, &contenido) == CIERTO;
    toma(contenido);
    if (queda) {
        throw fallo{di("the value '%1' of '%2' is not deleted", p.argumentos[1], c.entera)};
    }
    if (p.en_json) {
        escribe_json(json::objeto().pon("key", c.entera).pon("name", p.argumentos[1]).pon("done", true));
    } else {
        salida().escribe(di("deleted"), estilo::bueno).linea(L" " + c.entera + L" " + p.argumentos[1]);
    }
    return hecho;
}

int i_rm(peticion& p) {
    const clave c = i_clave(p.argumentos[0]);
    i_exige(c, std::nullopt);
    return p.argumentos.size() == 2 ? i_rm_valor(p, c) : i_rm_clave(p, c);
}

constexpr opcion opciones_leer[] = {{"view", "V", "only the 32-bit or the 64-bit view (32, 64)"}};
constexpr opcion opciones_set[] = {
    {"dword", "", "the data is a 32-bit number"},
    {"expand", "", "the data contains references to environment variables (%PATH%)"},
    {"view", "V", "in the 32-bit or the 64-bit view (32, 64)"},
    opcion_en_seco,
};
constexpr opcion opciones_rm[] = {opcion_en_seco};
constexpr ejemplo ejemplos_ls[] = {{R"(reg ls "HKCU\Control Panel")", "subkeys and string values"}};
constexpr ejemplo ejemplos_get[] = {
    {R"(reg get "HKCU\Control Panel\International" LocaleName)", "one value"}};
constexpr ejemplo ejemplos_set[] = {
    {R"(reg set HKCU\Software\Mine Colour blue)", "a string; the key is created"},
    {R"(reg set HKCU\Software\Mine Size 12 --dword)", "a number"},
    {R"(reg set HKCU\Software\Mine\Deep)", "the key alone"}};
constexpr ejemplo ejemplos_rm[] = {{R"(reg rm HKCU\Software\Mine Colour)", "one value"},
                                   {R"(reg rm HKCU\Software\Mine)", "the key with everything below it"}};

constexpr orden ordenes[] = {
    {"reg ls", "KEY", "subkeys and string values of a registry key",
     "KEY begins with HKCR, HKCC, HKCU, HKLM or HKU. Only string values are shown.", 1, 1, opciones_leer,
     ejemplos_ls, i_ls},
    {"reg get", "KEY NAME", "a value as a string",
     "The type of the value is not looked at: its bytes are taken as text. \"\" is the\n"
     "default value.",
     2, 2, opciones_leer, ejemplos_get, i_get},
    {"reg set", "KEY [NAME DATA]", "write a value, creating the key", "", 1, 3, opciones_set, ejemplos_set,
     i_set},
    {"reg rm", "KEY [NAME]", "delete a value, or a key with its subkeys; asks first",
     "Root keys and the keys directly below them are refused.", 1, 2, opciones_rm, ejemplos_rm, i_rm},
};

}  // namespace

const std::span<const orden> ordenes_registro = ordenes;

}  // namespace mando
