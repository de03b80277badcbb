// File sets over real directories and false ones, in both flavours.
#include "fichsdir.h"

#include "apoyo/busqueda_falsa.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/fallos.hpp"
#include "apoyo/paginas.hpp"
#include "apoyo/reglas_por_anyo.hpp"
#include "companions/lumospy.h"
#include "companions/reloj.hpp"
#include "timefich.h"

using namespace apoyo;

namespace {

using nombres = std::vector<std::string>;

nombres toma_lista(ArrCADENA* lista) {
    nombres n;
    for (unsigned long i = 0; i < arr_NumElemsCADENA(lista); ++i) {
        n.push_back(de_cp1252(arr_GetCADENA(lista, i)));
    }
    arr_DestruyeCADENA(&lista);
    return n;
}
nombres toma_lista(ArrCADENA_u* lista) {
    nombres n;
    for (unsigned long i = 0; i < arr_NumElemsCADENA_u(lista); ++i) {
        n.push_back(u8(arr_GetCADENA_u(lista, i)));
    }
    arr_DestruyeCADENA_u(&lista);
    return n;
}
nombres toma_lista(AcadOrde* lista) {
    nombres n;
    for (unsigned long i = 0; i < acadorde_num_elems(lista); ++i) {
        n.push_back(de_cp1252(acadorde_get(lista, i)));
    }
    acadorde_destruye(&lista);
    return n;
}

void destruye_registro(void** registro) {
    auto* f = static_cast<Fichsdir*>(*registro);
    fichsdir_destruye(&f);
    EXPECT_EQ(f, nullptr);
    *registro = f;
}

// Each record as "name date protected directory".
std::string describe(const Fichsdir* f) {
    return toma(fichsdir_nombre_fichero(f)) + " " + std::to_string(fichsdir_fecha_fichero(f)) + " " +
           std::to_string(fichsdir_fichero_esta_protegido(f)) + " " + u8(f->ruta);
}
nombres toma_lista(ArrPunteroConTipo* lista) {
    nombres n;
    for (unsigned long i = 0; i < arr_NumElemsPuntero(lista); ++i) {
        n.push_back(describe(static_cast<const Fichsdir*>(arr_GetPunteroConTipo(lista, i))));
    }
    arr_DestruyeEstructurasConTipo(&lista, destruye_registro);
    return n;
}
nombres toma_lista(ApunOrde* lista) {
    nombres n;
    for (unsigned long i = 0; i < apunorde_nousar_num_elems(lista); ++i) {
        n.push_back(describe(static_cast<const Fichsdir*>(apunorde_nousar_get(lista, i))));
    }
    apunorde_nousar_destruye(&lista);
    return n;
}

// A list of names out of a directory, from the 8-bit and, where there is one, the wide function.
nombres lista(ArrCADENA* (*corta)(const char*), ArrCADENA_u* (*ancha)(const wchar_t*),
              const std::string& directorio) {
    const nombres n = toma_lista(ancha(w(directorio).c_str()));
    if (corta != nullptr) {
        EXPECT_EQ(toma_lista(corta(cp1252(directorio).c_str())), n) << "the flavours differ";
    }
    return n;
}

// A false C:\d with every kind of entry, in no order.
void llena(busqueda_falsa& falsa) {
    falsa.patrones["C:\\d\\*"] = {
        {".", atributo_dir},
        {"..", atributo_dir},
        {"z.txt"},
        {"sub", atributo_dir},
        {"A.TXT", FILE_ATTRIBUTE_READONLY},
        {".svn", atributo_dir},
        {"H", atributo_dir | FILE_ATTRIBUTE_HIDDEN},
        {"..tres", atributo_dir},
        {"b.dat", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM},
        {".perfil"},
        {"enlace", atributo_dir | FILE_ATTRIBUTE_REPARSE_POINT, IO_REPARSE_TAG_SYMLINK},
        {"a", atributo_dir},
        {"a\xC3\xB1o.x"},
    };
}

// Stops at the call that it counts down to.
struct contador {
    int llamadas = 0;
    int para_en = 1000;
    static unsigned short pregunta(void* yo) {
        auto* c = static_cast<contador*>(yo);
        return ++c->llamadas == c->para_en ? CIERTO : 2;  // what is not 1 goes on
    }
};

}  // namespace

TEST(fichsdir, nombres_de_ficheros_en_el_orden_del_sistema) {
    busqueda_falsa falsa;
    llena(falsa);
    const nombres esperado{"z.txt", "A.TXT", "b.dat", ".perfil", "a\xC3\xB1o.x"};
    EXPECT_EQ(lista(fichsdir_nombres_ficheros, fichsdir_nombres_ficheros_u, "C:\\d"), esperado);
    EXPECT_EQ(lista(fichsdir_nombres_ficheros, fichsdir_nombres_ficheros_u, "C:\\d\\"), esperado);
    for (const std::string& patron : falsa.abiertos) {
        EXPECT_EQ(patron, "C:\\d\\*");
    }
}

TEST(fichsdir, el_patron_de_un_directorio) {
    struct fila {
        std::string directorio;
        std::string patron;
    };
    const fila filas[] = {
        {.directorio = "C:\\d", .patron = "C:\\d\\*"}, {.directorio = "C:\\d\\", .patron = "C:\\d\\*"},
        {.directorio = "C:/d/", .patron = "C:/d/\\*"},  // only "\" counts
        {.directorio = "", .patron = completa("\\*")}, {.directorio = "rel", .patron = completa("rel\\*")},
    };
    for (const fila& f : filas) {
        busqueda_falsa falsa;
        falsa.patrones[f.patron] = {{"x"}};
        EXPECT_EQ(lista(fichsdir_nombres_ficheros, fichsdir_nombres_ficheros_u, f.directorio), nombres{"x"});
        EXPECT_EQ(falsa.abiertos, (nombres{f.patron, f.patron})) << f.directorio;
    }
}

TEST(fichsdir, directorios_segun_puntos_y_ocultos) {
    busqueda_falsa falsa;
    llena(falsa);
    EXPECT_EQ(lista(fichsdir_directorios, fichsdir_directorios_u, "C:\\d"),
              (nombres{"H", "a", "enlace", "sub"}));
    EXPECT_EQ(lista(nullptr, fichsdir_directorios_sin_ocultos_u, "C:\\d"), (nombres{"a", "enlace", "sub"}));
    EXPECT_EQ(lista(nullptr, fichsdir_directorios_incluyendo_empiezan_por_puntos_u, "C:\\d"),
              (nombres{"..tres", ".svn", "H", "a", "enlace", "sub"}));
}

TEST(fichsdir, directorios_ocultos_y_con_punto_de_verdad) {
    directorio_temporal d;
    d.directorio("H");
    d.pon_atributos("H", FILE_ATTRIBUTE_HIDDEN);
    d.directorio(".svn");
    d.fichero("f");
    EXPECT_EQ(lista(fichsdir_directorios, fichsdir_directorios_u, d.ruta()), nombres{"H"});
    // Under Wine a name that begins with a point may be hidden by itself.
    const bool punto_oculto = (d.atributos(".svn") & FILE_ATTRIBUTE_HIDDEN) != 0;
    EXPECT_EQ(lista(nullptr, fichsdir_directorios_sin_ocultos_u, d.ruta()), nombres{}) << punto_oculto;
    EXPECT_EQ(lista(nullptr, fichsdir_directorios_incluyendo_empiezan_por_puntos_u, d.ruta()),
              (nombres{".svn", "H"}));
}

TEST(fichsdir, directorios_sin_extension) {
    struct fila {
        nombres hay;
        nombres quedan;
    };
    const fila filas[] = {
        {.hay = {"a", "b.old", "c.bak", "d"}, .quedan = {"a", "d"}},
        {.hay = {"d", "c.bak", "b.old", "a"}, .quedan = {"a", "d"}},
        {.hay = {"x.1", "y.2"}, .quedan = {}},
        {.hay = {"a", "b"}, .quedan = {"a", "b"}},
        {.hay = {"a.b", "a.b.c", "z"}, .quedan = {"z"}},
        {.hay = {"punto.", "blanco. "}, .quedan = {"blanco. ", "punto."}},  // nothing after the point
        {.hay = {".git"}, .quedan = {}},                                    // left out before
        {.hay = {"\xC3\xB1", "\xC3\xB1.\xC3\xB1"}, .quedan = {"\xC3\xB1"}},
        {.hay = {}, .quedan = {}},
    };
    for (const fila& f : filas) {
        busqueda_falsa falsa;
        for (const std::string& nombre : f.hay) {
            falsa.patrones["C:\\d\\*"].push_back({nombre, atributo_dir});
        }
        EXPECT_EQ(toma_lista(fichsdir_directorios_sin_extension("C:\\d")), f.quedan)
            << testing::PrintToString(f.hay);
    }
}

TEST(fichsdir, lo_que_cumple_un_patron) {
    const en_pagina p(1252);
    busqueda_falsa falsa;
    falsa.patrones["C:\\d\\s*"] = {
        {".", atributo_dir}, {"..", atributo_dir}, {"s2"}, {"sub", atributo_dir}, {"s1"},
        {".s", atributo_dir}};
    EXPECT_EQ(toma_lista(fichsdir_nombres_ficheros_cumplen_filtro_u(L"C:\\d\\s*")), (nombres{"s2", "s1"}));
    EXPECT_EQ(toma_lista(fichsdir_nombres_ficheros_cumplen_filtro(L"C:\\d\\s*")), (nombres{"s2", "s1"}));
    EXPECT_EQ(toma_lista(fichsdir_nombres_directorios_cumplen_filtro_u(L"C:\\d\\s*")),
              (nombres{".", "..", "sub", ".s"}));
    directorio_temporal d;
    const std::string japones = "\xE6\x97\xA5\xE6\x9C\xAC";
    EXPECT_EQ(falsa.abiertos.size(), 3u);
    falsa.patrones[d.ruta(japones) + "\\*"] = {{"\xC3\xB1.txt"}, {japones}};
    EXPECT_EQ(toma_lista(fichsdir_nombres_ficheros_cumplen_filtro(d.ruta_w(japones + "\\*").c_str())),
              (nombres{"\xC3\xB1.txt", "??"}))
        << "the pattern in UTF-16, the names by the code page";
}

TEST(fichsdir, ficheros_con_extension) {
    const en_pagina p(1252);
    struct fila {
        std::string nombre;
        std::string extension;
        bool corta;
        bool ancha;
    };
    const fila filas[] = {
        {.nombre = "a.txt", .extension = "txt", .corta = true, .ancha = true},
        {.nombre = "a.TXT", .extension = "txt", .corta = true, .ancha = true},
        {.nombre = "a.txt", .extension = "TXT", .corta = false, .ancha = true},  // compared as it is
        {.nombre = "a.txt", .extension = ".txt", .corta = false, .ancha = false},
        {.nombre = "a.txt", .extension = "tx", .corta = false, .ancha = false},
        {.nombre = "a.tar.gz", .extension = "gz", .corta = true, .ancha = true},
        {.nombre = "a", .extension = "", .corta = true, .ancha = true},
        {.nombre = "a.txt", .extension = "", .corta = false, .ancha = false},
        {.nombre = "a.", .extension = "", .corta = true, .ancha = true},
        {.nombre = "a.txt  ", .extension = "txt", .corta = true, .ancha = true},  // trailing blanks
        {.nombre = ".txt",
         .extension = "txt",
         .corta = true,
         .ancha = false},  // to the splitter all base name
        {.nombre = ".txt", .extension = "", .corta = false, .ancha = true},
        {.nombre = "a.b c", .extension = "b c", .corta = true, .ancha = true},
        {.nombre = "a.\xC3\x91", .extension = "\xC3\xB1", .corta = true, .ancha = false},  // A to Z alone
        {.nombre = "a.\xC3\xB1", .extension = "\xC3\xB1", .corta = true, .ancha = true},
    };
    for (const fila& f : filas) {
        busqueda_falsa falsa;
        falsa.patrones["C:\\d\\*"] = {{f.nombre}, {"sub.txt", atributo_dir}};
        EXPECT_EQ(toma_lista(fichsdir_nombres_ficheros_con_extension_u(L"C:\\d", w(f.extension).c_str())),
                  f.ancha ? nombres{f.nombre} : nombres{})
            << f.nombre << " by " << f.extension;
        EXPECT_EQ(toma_lista(fichsdir_nombres_ficheros_con_extension("C:\\d", cp1252(f.extension).c_str())),
                  f.corta ? nombres{f.nombre} : nombres{})
            << f.nombre << " by " << f.extension;
    }
}

TEST(fichsdir, una_extension_que_nadie_puede_tener_se_informa) {
    const en_pagina p(1252);
    busqueda_falsa falsa;
    falsa.patrones["C:\\d\\*"] = {{"a.txt"}, {"sub", atributo_dir}, {"sub.\xE6\x97\xA5", atributo_dir}};
    EXPECT_EQ(toma_lista(fichsdir_nombres_ficheros_con_extension("C:\\d", "t?t")), nombres{});
    const informe dado = toma_el_informe();
    EXPECT_EQ(dado.detalle, "t?t");
    // Of a directory, what the code page lacks.
    EXPECT_EQ(toma_lista(fichsdir_directorios_sin_extension("C:\\d")), nombres{"sub"});
    const informe de_directorio = toma_el_informe();
    EXPECT_EQ(de_directorio.expresion, dado.expresion);
    EXPECT_EQ(de_directorio.detalle, "?");
}

TEST(fichsdir, nombres_base_en_una_caja_ordenados_y_sin_repetidos) {
    const en_pagina p(1252);
    busqueda_falsa falsa;
    falsa.patrones["C:\\d\\*"] = {{"zeta.txt"}, {"Alfa.TXT"},    {"ALFA.txt"},      {"\xC3\xB1u.txt"},
                                  {"beta.dat"}, {"a.b.txt"},     {"\xC3\x91U.Txt"}, {"sub.txt", atributo_dir},
                                  {"alfa"},     {"  gana .sus"}, {".SUS"}};
    EXPECT_EQ(toma_lista(fichsdir_nombres_base_en_mayusculas_ficheros_con_extension("C:\\d", "txt")),
              (nombres{"A.B", "ALFA", "ZETA", "\xC3\x91U"}));
    EXPECT_EQ(toma_lista(fichsdir_nombres_base_en_minusculas_ficheros_con_extension("C:\\d", "txt")),
              (nombres{"a.b", "alfa", "zeta", "\xC3\xB1u"}));
    EXPECT_EQ(toma_lista(fichsdir_nombres_base_en_minusculas_ficheros_con_extension("C:\\d", "")),
              nombres{"alfa"});
    EXPECT_EQ(toma_lista(fichsdir_nombres_base_en_minusculas_ficheros_con_extension("C:\\d", "TXT")),
              nombres{});
    EXPECT_EQ(toma_lista(fichsdir_nombres_base_en_mayusculas_ficheros_con_extension("C:\\d", "sus")),
              (nombres{"", "  GANA "}))
        << "only the extension loses its blanks; a name that is all extension has an empty base";
    // A set of the kind that callers can go on filling.
    AcadOrde* conjunto = fichsdir_nombres_base_en_minusculas_ficheros_con_extension("C:\\d", "txt");
    acadorde_inserta(conjunto, "alfa");
    acadorde_inserta(conjunto, "nuevo");
    EXPECT_EQ(toma_lista(conjunto), (nombres{"a.b", "alfa", "nuevo", "zeta", "\xC3\xB1u"}));
}

TEST(fichsdir, registros_de_ficheros) {
    directorio_temporal d;
    d.fichero("b.txt");
    d.fichero("A.dat", "", FILE_ATTRIBUTE_READONLY);
    d.fichero("a\xC3\xB1o");
    d.directorio("sub");
    d.pon_fecha("b.txt", 1'600'000'000);
    d.pon_atributos("A.dat", FILE_ATTRIBUTE_NORMAL);
    d.pon_fecha("A.dat", 1'234'567'890);
    d.pon_atributos("A.dat", FILE_ATTRIBUTE_READONLY);
    d.pon_fecha("a\xC3\xB1o", 0);
    const auto local = [](long long utc) {
        return std::to_string(
            interno::i_segundos_locales_desde_1970(interno::i_filetime_de_segundos(utc).value()));
    };
    const std::string b = "b.txt " + local(1'600'000'000) + " 0 " + d.ruta();
    const std::string a = "A.dat " + local(1'234'567'890) + " 1 " + d.ruta();
    const std::string anyo = "a\xC3\xB1o " + local(0) + " 0 " + d.ruta();
    EXPECT_EQ(toma_lista(fichsdir_ficheros_existentes_ordenados(d.ruta_a().c_str())), (nombres{a, anyo, b}))
        << "sorted byte by byte";
    nombres ancha = toma_lista(fichsdir_ficheros_u(d.ruta_w().c_str()));
    EXPECT_EQ(toma_lista(fichsdir_ficheros(d.ruta_a().c_str())), ancha);
    contador c;
    unsigned short interrumpido = 7;
    EXPECT_EQ(toma_lista(fichsdir_ficheros_prog(d.ruta_a().c_str(), &c, &interrumpido, contador::pregunta)),
              ancha);
    EXPECT_EQ(interrumpido, 7) << "never reset";
    EXPECT_EQ(c.llamadas, 6) << "asked before each entry, . and .. and directories too";
    std::sort(ancha.begin(), ancha.end());
    EXPECT_EQ(ancha, (nombres{a, anyo, b}));
}

TEST(fichsdir, los_registros_vienen_en_el_orden_del_sistema) {
    busqueda_falsa falsa;
    llena(falsa);
    nombres esperado;
    for (const char* nombre : {"z.txt", "A.TXT", "b.dat", ".perfil", "a\xC3\xB1o.x"}) {
        esperado.push_back(nombre);
    }
    ArrPunteroConTipo* registros = fichsdir_ficheros_u(L"C:\\d");
    ASSERT_EQ(arr_NumElemsPuntero(registros), esperado.size());
    for (unsigned long i = 0; i < esperado.size(); ++i) {
        const auto* f = static_cast<const Fichsdir*>(arr_GetPunteroConTipo(registros, i));
        EXPECT_EQ(de_cp1252(f->nombre), esperado[i]);
        EXPECT_EQ(f->protegido, esperado[i] == "A.TXT" ? 1 : 0);
        EXPECT_EQ(u8(f->ruta), "C:\\d") << "as the caller gave it";
        EXPECT_LT(f->fecha, 0) << "false entries are dated 1601";
    }
    arr_DestruyeEstructurasConTipo(&registros, destruye_registro);
    EXPECT_EQ(toma_expresiones(), nombres(esperado.size(), "fichsdir->fecha >= 0"));
}

// Those of timefich_convertir_fecha in every year, where the daylight rules have changed since then too.
TEST(fichsdir, la_fecha_es_la_del_reloj_de_pared_con_las_reglas_de_su_anyo) {
    for (const reglas_por_anyo::zona& zona : reglas_por_anyo::zonas) {
        SCOPED_TRACE(zona.nombre);
        const reglas_por_anyo reglas(zona);
        busqueda_falsa falsa;
        std::vector<FILETIME> fechas;
        for (const long long cambio : zona.cambios) {
            for (const long long s : {-31'556'952ll, -86'400ll, -1ll, 0ll, 60ll, 120ll, 15'778'476ll}) {
                entrada_falsa e{"x"};
                if (cambio + s >= 86'400) {
                    e.fecha = interno::i_filetime_de_segundos(cambio + s).value();
                    falsa.patrones["C:\\d\\*"].push_back(e);
                    fechas.push_back(e.fecha);
                }
            }
        }
        ASSERT_FALSE(fechas.empty());
        for (const bool ancha : {true, false}) {
            ArrPunteroConTipo* registros = ancha ? fichsdir_ficheros_u(L"C:\\d") : fichsdir_ficheros("C:\\d");
            ASSERT_EQ(arr_NumElemsPuntero(registros), fechas.size());
            for (unsigned long i = 0; i < fechas.size(); ++i) {
                EXPECT_EQ(
                    fichsdir_fecha_fichero(static_cast<const Fichsdir*>(arr_GetPunteroConTipo(registros, i))),
                    timefich_convertir_fecha(&fechas[i]))
                    << i;
            }
            arr_DestruyeEstructurasConTipo(&registros, destruye_registro);
        }
    }
}

TEST(fichsdir, una_fecha_anterior_a_1970_se_queda_y_se_informa) {
    directorio_temporal d;
    d.fichero("viejo");
    d.pon_fecha("viejo", -86'400 * 365);
    ArrPunteroConTipo* registros = fichsdir_ficheros_u(d.ruta_w().c_str());
    ESPERA_INFORMES();
    ASSERT_EQ(arr_NumElemsPuntero(registros), 1u);
    const auto* f = static_cast<const Fichsdir*>(arr_GetPunteroConTipo(registros, 0));
    EXPECT_LT(fichsdir_fecha_fichero(f), -86'400 * 300);
    ESPERA_INFORMES("fichsdir->fecha >= 0");
    EXPECT_EQ(toma(fichsdir_nombre_fichero(f)), "viejo");
    ESPERA_INFORMES("fichsdir->fecha >= 0");
    arr_DestruyeEstructurasConTipo(&registros, destruye_registro);
    ESPERA_INFORMES("fichsdir->fecha >= 0");
}

TEST(fichsdir, el_conjunto_ordenado_se_busca_y_se_llena) {
    busqueda_falsa falsa;
    const FILETIME fecha = interno::i_filetime_de_segundos(1'000'000).value();
    for (const char* nombre : {"c", "B", "a", "b", "\xC3\xB1", "a"}) {
        falsa.patrones["C:\\d\\*"].push_back({nombre, FILE_ATTRIBUTE_NORMAL, 0, fecha});
    }
    const auto compara = [](const void* f, const void* nombre) {
        return fichsdir_compara_nombre(static_cast<const Fichsdir*>(f), static_cast<const char*>(nombre));
    };
    ApunOrde* conjunto = fichsdir_ficheros_existentes_ordenados("C:\\d");
    ASSERT_EQ(apunorde_nousar_num_elems(conjunto), 6u);
    for (const char* nombre : {"a", "B", "b", "c", "ñ"}) {
        const auto* f =
            static_cast<const Fichsdir*>(apunorde_nousar_busca(conjunto, cp1252(nombre).c_str(), +compara));
        ASSERT_NE(f, nullptr) << nombre;
        EXPECT_EQ(f->nombre, cp1252(nombre));
    }
    EXPECT_EQ(apunorde_nousar_busca(conjunto, "A", +compara), nullptr);
    // Records move over to the set that the caller fills.
    ApunOrde* vacio = fichsdir_ficheros_ordenados();
    EXPECT_EQ(apunorde_nousar_num_elems(vacio), 0u);
    ArrPunteroConTipo* sueltos = fichsdir_ficheros("C:\\d");
    for (unsigned long i = 0; i < 6; ++i) {
        void* registro = arr_GetPunteroConTipo(sueltos, i);
        apunorde_nousar_inserta_original(vacio, &registro);
    }
    arr_DestruyeEstructurasConTipo(
        &sueltos, +[](void**) {});
    EXPECT_EQ(toma_lista(vacio), toma_lista(conjunto));
}

TEST(fichsdir, operaciones_de_un_registro) {
    struct fila {
        const wchar_t* ruta;
        std::string path;
    };
    const fila filas[] = {
        {.ruta = L"C:\\d", .path = "C:\\d\\a\xC3\xB1o.txt"},
        {.ruta = L"C:\\d\\", .path = "C:\\d\\a\xC3\xB1o.txt"},
        {.ruta = L"C:/d/", .path = "C:/d/a\xC3\xB1o.txt"},
        {.ruta = L"\x65E5", .path = "\xE6\x97\xA5\\a\xC3\xB1o.txt"},
        {.ruta = L"", .path = "\\a\xC3\xB1o.txt"},
    };
    for (const fila& f : filas) {
        texto_a nombre = cp1252("a\xC3\xB1o.txt");
        texto_w ruta = f.ruta;
        const Fichsdir registro = {nombre.data(), 5, 1, ruta.data()};
        EXPECT_EQ(toma(fichsdir_path_fichero(&registro)), f.path);
        EXPECT_EQ(toma(fichsdir_nombre_fichero(&registro)), "a\xC3\xB1o.txt");
        EXPECT_EQ(fichsdir_fecha_fichero(&registro), 5);
        EXPECT_EQ(fichsdir_fichero_esta_protegido(&registro), 1);
        EXPECT_EQ(fichsdir_compara_nombre(&registro, nombre.c_str()), 0);
        EXPECT_LT(fichsdir_compara_nombre(&registro, "b"), 0);
        EXPECT_GT(fichsdir_compara_nombre(&registro, "a"), 0);
        EXPECT_GT(fichsdir_compara_nombre(&registro, "azz"), 0) << "bytes count as unsigned";
    }
}

TEST(fichsdir, los_registros_rotos_se_informan_en_cada_operacion) {
    struct fila {
        Fichsdir registro;
        nombres informes;
    };
    static char nombre[] = "n";
    static wchar_t ruta[] = L"r";
    const fila filas[] = {
        {.registro = {nullptr, 0, 0, ruta}, .informes = {"(fichsdir->nombre) != NULL"}},
        {.registro = {nombre, -1, 0, ruta}, .informes = {"fichsdir->fecha >= 0"}},
        {.registro = {nombre, 0, 0, nullptr}, .informes = {"(fichsdir->ruta) != NULL"}},
        {.registro = {nullptr, -1, 0, nullptr},
         .informes = {"(fichsdir->nombre) != NULL", "fichsdir->fecha >= 0", "(fichsdir->ruta) != NULL"}},
    };
    for (const fila& f : filas) {
        const bool con_nombre = f.registro.nombre != nullptr;
        EXPECT_EQ(toma(fichsdir_nombre_fichero(&f.registro)), con_nombre ? "n" : "");
        EXPECT_EQ(toma_expresiones(), f.informes);
        EXPECT_EQ(toma(fichsdir_path_fichero(&f.registro)),
                  std::string(f.registro.ruta != nullptr ? "r\\" : "\\") + (con_nombre ? "n" : ""));
        EXPECT_EQ(toma_expresiones(), f.informes);
        EXPECT_EQ(fichsdir_fecha_fichero(&f.registro), f.registro.fecha);
        EXPECT_EQ(toma_expresiones(), f.informes);
        EXPECT_EQ(fichsdir_fichero_esta_protegido(&f.registro), 0);
        EXPECT_EQ(toma_expresiones(), f.informes);
        EXPECT_EQ(fichsdir_compara_nombre(&f.registro, "n"), con_nombre ? 0 : -1);
        EXPECT_EQ(toma_expresiones(), f.informes);
        auto* copia = static_cast<Fichsdir*>(lumospy_nousar_calloc(1, sizeof(Fichsdir)));
        copia->fecha = f.registro.fecha;
        fichsdir_destruye(&copia);
        EXPECT_EQ(copia, nullptr);
        nombres esperado{"(fichsdir->nombre) != NULL"};
        if (f.registro.fecha < 0) {
            esperado.push_back("fichsdir->fecha >= 0");
        }
        esperado.push_back("(fichsdir->ruta) != NULL");
        EXPECT_EQ(toma_expresiones(), esperado);
    }
}

TEST(fichsdir, los_registros_nulos_se_informan) {
    const std::string texto = "(fichsdir) != NULL";
    EXPECT_EQ(toma(fichsdir_nombre_fichero(nullptr)), "");
    ESPERA_INFORMES(texto);
    EXPECT_EQ(toma(fichsdir_path_fichero(nullptr)), "");
    ESPERA_INFORMES(texto);
    EXPECT_EQ(fichsdir_fecha_fichero(nullptr), 0);
    ESPERA_INFORMES(texto);
    EXPECT_EQ(fichsdir_fichero_esta_protegido(nullptr), 0);
    ESPERA_INFORMES(texto);
    EXPECT_EQ(fichsdir_compara_nombre(nullptr, "a"), 0);
    ESPERA_INFORMES(texto);
    char nombre[] = "n";
    wchar_t ruta[] = L"r";
    const Fichsdir registro = {nombre, 0, 0, ruta};
    EXPECT_EQ(fichsdir_compara_nombre(&registro, nullptr), 0);
    ESPERA_INFORMES("(nombre) != NULL");
    EXPECT_EQ(fichsdir_compara_nombre(nullptr, nullptr), 0);
    ESPERA_INFORMES(texto, "(nombre) != NULL");
    fichsdir_destruye(nullptr);
    const informe dado = toma_el_informe();
    EXPECT_EQ(dado.expresion, texto);
    EXPECT_EQ(dado.etiqueta, "fichsdir (LUMODIR.DLL)");
    Fichsdir* nulo = nullptr;
    fichsdir_destruye(&nulo);
    ESPERA_INFORMES(texto);
}

TEST(fichsdir, un_listado_se_interrumpe_y_da_lo_que_llevaba) {
    struct fila {
        int para_en;
        nombres ficheros;
        nombres directorios;
    };
    const fila filas[] = {
        {.para_en = 1, .ficheros = {}, .directorios = {}},
        {.para_en = 4, .ficheros = {"z.txt"}, .directorios = {}},
        {.para_en = 5, .ficheros = {"z.txt"}, .directorios = {"sub"}},
        {.para_en = 8, .ficheros = {"z.txt", "A.TXT"}, .directorios = {"H", "sub"}},  // sorted all the same
        {.para_en = 13,
         .ficheros = {"z.txt", "A.TXT", "b.dat", ".perfil"},
         .directorios = {"H", "a", "enlace", "sub"}},
    };
    for (const fila& f : filas) {
        busqueda_falsa falsa;
        llena(falsa);
        contador c{0, f.para_en};
        unsigned short interrumpido = 0;
        EXPECT_EQ(toma_lista(fichsdir_nombres_ficheros_prog("C:\\d", &c, &interrumpido, contador::pregunta)),
                  f.ficheros);
        EXPECT_EQ(interrumpido, 1);
        EXPECT_EQ(c.llamadas, f.para_en);
        c = {0, f.para_en};
        interrumpido = 0;
        EXPECT_EQ(toma_lista(fichsdir_directorios_prog("C:\\d", &c, &interrumpido, contador::pregunta)),
                  f.directorios);
        EXPECT_EQ(interrumpido, 1);
        c = {0, f.para_en};
        interrumpido = 0;
        EXPECT_EQ(toma_lista(fichsdir_ficheros_prog("C:\\d", &c, &interrumpido, contador::pregunta)).size(),
                  f.ficheros.size());
        EXPECT_EQ(interrumpido, 1);
        toma_informes();  // dates of 1601
    }
}

TEST(fichsdir, el_anfitrion_puede_cambiar_su_texto_y_vaciar_el_directorio_a_mitad) {
    directorio_temporal d;
    d.fichero("s\\a.txt");
    d.fichero("s\\b.txt");
    struct todo {
        directorio_temporal* d;
        texto_a directorio;
        std::size_t ficheros_antes = 0;
        static unsigned short pregunta(void* yo) {
            auto* t = static_cast<todo*>(yo);
            if (!t->directorio.empty()) {
                // It calls the library again, removes what is being listed and spoils its own text.
                t->ficheros_antes = toma_lista(fichsdir_nombres_ficheros(t->directorio.c_str())).size();
                std::fill(t->directorio.begin(), t->directorio.end(), '?');
                t->directorio.clear();
                t->d->borra("s\\a.txt");
                t->d->borra("s\\b.txt");
            }
            return 0;
        }
    };
    todo t{&d, d.ruta_a("s")};
    unsigned short interrumpido = 0;
    ArrPunteroConTipo* registros =
        fichsdir_ficheros_prog(t.directorio.c_str(), &t, &interrumpido, todo::pregunta);
    EXPECT_EQ(t.ficheros_antes, 2u);
    EXPECT_EQ(d.arbol(), nombres{"s\\"});
    for (unsigned long i = 0; i < arr_NumElemsPuntero(registros); ++i) {
        EXPECT_EQ(u8(static_cast<const Fichsdir*>(arr_GetPunteroConTipo(registros, i))->ruta), d.ruta("s"));
    }
    arr_DestruyeEstructurasConTipo(&registros, destruye_registro);
    EXPECT_EQ(interrumpido, 0);
    ESPERA_INFORMES();
}

TEST(fichsdir, sin_interrupcion_se_pregunta_por_cada_entrada) {
    busqueda_falsa falsa;
    llena(falsa);
    contador c;
    unsigned short interrumpido = 3;
    EXPECT_EQ(toma_lista(fichsdir_directorios_prog("C:\\d", &c, &interrumpido, contador::pregunta)),
              (nombres{"H", "a", "enlace", "sub"}));
    EXPECT_EQ(c.llamadas, 13);
    EXPECT_EQ(interrumpido, 3);
}

TEST(fichsdir, el_progreso_incompleto_se_informa) {
    const nombres todos{"(progreso) != NULL", "(interrumpido) != NULL",
                        "(fncptr_prgs_usuario_cierra_progreso) != NULL"};
    busqueda_falsa falsa;
    llena(falsa);
    const nombres ficheros{"z.txt", "A.TXT", "b.dat", ".perfil", "a\xC3\xB1o.x"};
    unsigned short interrumpido = 0;
    int progreso = 0;
    EXPECT_EQ(toma_lista(fichsdir_nombres_ficheros_prog("C:\\d", nullptr, nullptr, nullptr)), ficheros);
    EXPECT_EQ(toma_expresiones(), todos);
    EXPECT_EQ(toma_lista(fichsdir_directorios_prog("C:\\d", nullptr, nullptr, nullptr)).size(), 4u);
    EXPECT_EQ(toma_expresiones(), todos);
    ArrPunteroConTipo* registros = fichsdir_ficheros_prog("C:\\no", nullptr, nullptr, nullptr);
    EXPECT_EQ(toma_lista(registros), nombres{});
    EXPECT_EQ(toma_expresiones(), todos);
    // Without a callback, what goes with it must be missing too.
    EXPECT_EQ(toma_lista(fichsdir_nombres_ficheros_prog("C:\\d", &progreso, &interrumpido, nullptr)),
              ficheros);
    ESPERA_INFORMES("(fncptr_prgs_usuario_cierra_progreso) != NULL", "progreso == NULL",
                    "interrumpido == NULL");
    EXPECT_EQ(interrumpido, 0);
    // A callback without a flag still stops the walk.
    const auto para = +[](void*) -> unsigned short { return CIERTO; };
    EXPECT_EQ(toma_lista(fichsdir_nombres_ficheros_prog("C:\\d", nullptr, nullptr, para)), nombres{});
    ESPERA_INFORMES("(progreso) != NULL", "(interrumpido) != NULL");
}

TEST(fichsdir, una_excepcion_del_anfitrion_no_interrumpe) {
    busqueda_falsa falsa;
    llena(falsa);
    int progreso = 0;
    unsigned short interrumpido = 0;
    const auto lanza = +[](void*) -> unsigned short { throw 1; };
    EXPECT_EQ(toma_lista(fichsdir_directorios_prog("C:\\d", &progreso, &interrumpido, lanza)).size(), 4u);
    EXPECT_EQ(interrumpido, 0);
}

TEST(fichsdir, los_textos_nulos_se_informan_y_dan_listas_vacias) {
    busqueda_falsa falsa;
    const nombres d{"(directorio) != NULL"};
    const nombres p{"(path_filtro_generico) != NULL"};
    const nombres e{"(extension) != NULL"};
    const nombres de{"(directorio) != NULL", "(extension) != NULL"};
    const auto espera = [&](nombres n, const nombres& informes) {
        EXPECT_EQ(n, nombres{});
        EXPECT_EQ(toma_expresiones(), informes);
    };
    contador c;
    unsigned short i = 0;
    const auto f = contador::pregunta;
    espera(toma_lista(fichsdir_ficheros(nullptr)), d);
    espera(toma_lista(fichsdir_ficheros_u(nullptr)), d);
    espera(toma_lista(fichsdir_ficheros_prog(nullptr, &c, &i, f)), d);
    espera(toma_lista(fichsdir_ficheros_existentes_ordenados(nullptr)), d);
    espera(toma_lista(fichsdir_directorios(nullptr)), d);
    espera(toma_lista(fichsdir_directorios_u(nullptr)), d);
    espera(toma_lista(fichsdir_directorios_prog(nullptr, &c, &i, f)), d);
    espera(toma_lista(fichsdir_directorios_sin_extension(nullptr)), d);
    espera(toma_lista(fichsdir_directorios_sin_ocultos_u(nullptr)), d);
    espera(toma_lista(fichsdir_directorios_incluyendo_empiezan_por_puntos_u(nullptr)), d);
    espera(toma_lista(fichsdir_nombres_ficheros(nullptr)), d);
    espera(toma_lista(fichsdir_nombres_ficheros_u(nullptr)), d);
    espera(toma_lista(fichsdir_nombres_ficheros_prog(nullptr, &c, &i, f)), d);
    espera(toma_lista(fichsdir_nombres_ficheros_cumplen_filtro(nullptr)), p);
    espera(toma_lista(fichsdir_nombres_ficheros_cumplen_filtro_u(nullptr)), p);
    espera(toma_lista(fichsdir_nombres_directorios_cumplen_filtro_u(nullptr)), p);
    espera(toma_lista(fichsdir_nombres_ficheros_con_extension(nullptr, "a")), d);
    espera(toma_lista(fichsdir_nombres_ficheros_con_extension("C:\\d", nullptr)), e);
    espera(toma_lista(fichsdir_nombres_ficheros_con_extension(nullptr, nullptr)), de);
    espera(toma_lista(fichsdir_nombres_ficheros_con_extension_u(nullptr, L"a")), d);
    espera(toma_lista(fichsdir_nombres_ficheros_con_extension_u(L"C:\\d", nullptr)), e);
    espera(toma_lista(fichsdir_nombres_ficheros_con_extension_u(nullptr, nullptr)), de);
    espera(toma_lista(fichsdir_nombres_base_en_mayusculas_ficheros_con_extension(nullptr, "a")), d);
    espera(toma_lista(fichsdir_nombres_base_en_mayusculas_ficheros_con_extension("C:\\d", nullptr)), e);
    espera(toma_lista(fichsdir_nombres_base_en_minusculas_ficheros_con_extension(nullptr, "a")), d);
    espera(toma_lista(fichsdir_nombres_base_en_minusculas_ficheros_con_extension("C:\\d", nullptr)), e);
    EXPECT_EQ(falsa.abiertos, nombres{}) << "the system is not asked";
    EXPECT_EQ(c.llamadas, 0);
}

TEST(fichsdir, un_directorio_que_no_se_puede_leer_da_listas_vacias) {
    directorio_temporal d;
    d.fichero("fichero");
    for (const char* nombre : {"no_existe", "fichero"}) {
        const std::string ruta = d.ruta(nombre);
        EXPECT_EQ(lista(fichsdir_directorios, fichsdir_directorios_u, ruta), nombres{});
        EXPECT_EQ(lista(fichsdir_nombres_ficheros, fichsdir_nombres_ficheros_u, ruta), nombres{});
        EXPECT_EQ(toma_lista(fichsdir_ficheros_u(w(ruta).c_str())), nombres{});
        EXPECT_EQ(toma_lista(fichsdir_ficheros_existentes_ordenados(cp1252(ruta).c_str())), nombres{});
        EXPECT_EQ(toma_lista(fichsdir_nombres_ficheros_con_extension(cp1252(ruta).c_str(), "")), nombres{});
    }
}

TEST(fichsdir, rutas_mas_largas_que_el_limite_clasico_en_los_dos_sabores) {
    directorio_temporal d;
    const std::string hondo = std::string(200, 'a') + "\\" + std::string(200, 'b');
    d.fichero(hondo + "\\f.txt");
    d.directorio(hondo + "\\sub");
    EXPECT_EQ(lista(fichsdir_nombres_ficheros, fichsdir_nombres_ficheros_u, d.ruta(hondo)), nombres{"f.txt"});
    EXPECT_EQ(lista(fichsdir_directorios, fichsdir_directorios_u, d.ruta(hondo)), nombres{"sub"});
    ArrPunteroConTipo* registros = fichsdir_ficheros(d.ruta_a(hondo).c_str());
    ASSERT_EQ(arr_NumElemsPuntero(registros), 1u);
    EXPECT_EQ(toma(fichsdir_path_fichero(static_cast<const Fichsdir*>(arr_GetPunteroConTipo(registros, 0)))),
              d.ruta(hondo) + "\\f.txt");
    arr_DestruyeEstructurasConTipo(&registros, destruye_registro);
}

TEST(fichsdir, nombres_que_la_pagina_de_codigos_no_tiene) {
    const en_pagina p(1252);
    busqueda_falsa falsa;
    const FILETIME fecha = interno::i_filetime_de_segundos(10).value();
    falsa.patrones["C:\\d\\*"] = {{"\xE6\x97\xA5.txt", FILE_ATTRIBUTE_NORMAL, 0, fecha},
                                  {"\xED\xA0\xBD", FILE_ATTRIBUTE_NORMAL, 0, fecha},
                                  {"\xC4\x80", FILE_ATTRIBUTE_NORMAL, 0, fecha}};  // never a look-alike A
    EXPECT_EQ(toma_lista(fichsdir_nombres_ficheros_u(L"C:\\d")),
              (nombres{"\xE6\x97\xA5.txt", "\xED\xA0\xBD", "\xC4\x80"}));
    EXPECT_EQ(toma_lista(fichsdir_nombres_ficheros("C:\\d")), (nombres{"?.txt", "?", "?"}));
    EXPECT_EQ(toma_lista(fichsdir_nombres_ficheros_con_extension("C:\\d", "txt")), nombres{"?.txt"})
        << "and no report for what a disk holds";
    EXPECT_EQ(toma_lista(fichsdir_ficheros_u(L"C:\\d")).size(), 3u);
}

TEST(fichsdir, el_censo_cuenta_registros_nombres_y_rutas) {
    busqueda_falsa falsa;
    const FILETIME fecha = interno::i_filetime_de_segundos(10).value();
    for (int i = 0; i < 20; ++i) {
        falsa.patrones["C:\\d\\*"].push_back({std::to_string(i), FILE_ATTRIBUTE_NORMAL, 0, fecha});
    }
    const auto vivos = lumospy_bloques_vivos();
    ArrPunteroConTipo* registros = fichsdir_ficheros("C:\\d");
    EXPECT_EQ(lumospy_bloques_vivos() - vivos, 1u + 3 * 20);
    EXPECT_EQ(toma_lista(registros).size(), 20u);
    ArrCADENA_u* lista_u = fichsdir_nombres_ficheros_u(L"C:\\d");
    EXPECT_EQ(lumospy_bloques_vivos() - vivos, 1u + 20);
    EXPECT_EQ(toma_lista(lista_u).size(), 20u);
    EXPECT_EQ(lumospy_bloques_vivos(), vivos);
}

TEST(fichsdir, ningun_fallo_del_sistema_deja_nada_abierto) {
    directorio_temporal d;
    d.fichero("a.txt");
    d.fichero("b.txt");
    ArrPunteroConTipo* registros = nullptr;
    ArrCADENA* con_extension = nullptr;
    con_cada_fallo(
        [] {},
        [&] {
            registros = fichsdir_ficheros_u(d.ruta_w().c_str());
            con_extension = fichsdir_nombres_ficheros_con_extension(d.ruta_a().c_str(), "txt");
        },
        [&](const ronda& r) {
            const std::size_t num = toma_lista(registros).size();
            const std::size_t num_con = toma_lista(con_extension).size();
            if (r.limpia) {
                EXPECT_EQ(num, 2u) << r;
                EXPECT_EQ(num_con, 2u) << r;
            }
            const std::size_t informes = toma_informes().size();
            EXPECT_TRUE(r.fallada == "FindNextFileW" ? informes >= 1 : r.para_siempre || informes == 0) << r;
        });
}
