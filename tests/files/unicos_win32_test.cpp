// Unique files with an extension, in a directory or in the temporary one: their names, names that are taken, every
// call failing, and many at once.
#include <cstdlib>
#include <memory>
#include <set>

#include "apoyo/como_windows.hpp"
#include "temporales_de_prueba.hpp"

using namespace apoyo;
using namespace interno;

// ---- unique files with an extension

TEST(unicos, un_fichero_unico_lleva_la_extension_pedida) {
    const directorio_temporal dir;
    dir.directorio("ñandú");
    const struct {
        std::string directorio;
        std::string ext;
        std::string fin;
        std::string principio;  // of the result
    } filas[] = {
        {dir.ruta("ñandú"), "txt", ".txt", dir.ruta("ñandú") + "\\"},
        {dir.ruta("ñandú") + "\\", "txt", ".txt", dir.ruta("ñandú") + "\\"},
        {dir.ruta("ñandú") + "/", "txt", ".txt", dir.ruta("ñandú") + "/"},
        {dir.ruta("ñandú"), ".txt", ".txt", dir.ruta("ñandú") + "\\"},
        {dir.ruta("ñandú"), "..", "..", dir.ruta("ñandú") + "\\"},
        {dir.ruta("ñandú"), "", "", dir.ruta("ñandú") + "\\"},
        {dir.ruta("ñandú"), "año 日本", ".año 日本", dir.ruta("ñandú") + "\\"},
        {dir.ruta("ñandú"), "tar.gz", ".tar.gz", dir.ruta("ñandú") + "\\"},
        {dir.ruta("ñandú"), "tmp", ".tmp", dir.ruta("ñandú") + "\\"},  // the system's own file
        {dir.ruta("ñandú"), ".TMP", ".TMP", dir.ruta("ñandú") + "\\"},
    };
    for (const auto& fila : filas) {
        SCOPED_TRACE(fila.directorio + " | " + fila.ext);
        const std::string ruta = unico(fila.directorio, fila.ext);
        if (fila.ext == "..") {
            // Whether a name may end in points is the system's affair; nothing is left over in any case.
            toma_informes();
        } else {
            ASSERT_EQ(ruta.substr(0, fila.principio.size()), fila.principio);
            const std::string nombre = ruta.substr(fila.principio.size());
            EXPECT_TRUE(tiene_forma(nombre, "LUA", fila.fin)) << ruta;
            EXPECT_EQ(dir.contenido("ñandú\\" + nombre), "");
            EXPECT_EQ(dir.arbol("ñandú").size(), 1u);
        }
        for (const std::string& hay : dir.arbol("ñandú")) {
            dir.borra(hay);
        }
    }
}

TEST(unicos, en_una_unidad_sola_se_nombra_lo_que_se_ha_creado) {
    const directorio_temporal dir;
    const std::string unidad = dir.ruta().substr(0, 2);
    const en_directorio ahi(dir.ruta_w());  // where a bare drive is now
    for (const std::string final : {"", "  "}) {
        for (const std::string ext : {"txt", "tmp", ".ñ", ""}) {
            SCOPED_TRACE(final + "|" + ext);
            const std::string ruta = unico(unidad + final, ext);
            ASSERT_EQ(ruta.substr(0, 2), unidad);
            const std::string nombre = ruta.substr(2);
            EXPECT_EQ(nombre.substr(0, 3), "LUA") << ruta;
            EXPECT_EQ(completa(ruta), dir.ruta(nombre));
            EXPECT_EQ(dir.arbol(), textos{nombre});
            dir.limpia();
        }
    }
}

TEST(unicos, un_candidato_que_es_el_fichero_del_sistema_no_se_renombra) {
    const directorio_temporal dir;
    fallos f;
    f.falla_siempre("MoveFileExW", ERROR_ACCESS_DENIED);
    for (const std::string ext : {"tmp", ".tmp", "TMP"}) {
        const std::string ruta = unico(dir.ruta(), ext);
        EXPECT_TRUE(dir.existe(nombre_de(ruta))) << ext;
    }
    EXPECT_EQ(f.cuenta("MoveFileExW"), 0u);
    EXPECT_EQ(dir.arbol().size(), 3u);
}

TEST(unicos, con_extension_se_crea_en_el_directorio_temporal) {
    const directorio_temporal dir;
    const std::string ruta_larga = dir.directorio("Long ñandú directory name");
    wchar_t corto[MAX_PATH];
    ASSERT_NE(::GetShortPathNameW(w(ruta_larga).c_str(), corto, MAX_PATH), 0u);
    const con_temp temp(u8(corto));
    const struct {
        std::string ext;
        std::string prefijo;
        std::string fin;
    } filas[] = {
        {"txt", "LUA", ".txt"}, {"tmp", "LUM", ".tmp"}, {"TMP", "LUM", ".tmp"},
        {"Tmp", "LUM", ".tmp"}, {"ñ", "LUA", ".ñ"},     {".tmp", "LUA", ".tmp"},
    };
    for (const auto& fila : filas) {
        const std::string ruta = con_ext(fila.ext);
        EXPECT_EQ(ruta, ruta_larga + "\\" + nombre_de(ruta)) << fila.ext;  // the long form
        EXPECT_TRUE(tiene_forma(nombre_de(ruta), fila.prefijo, fila.fin)) << ruta;
        EXPECT_TRUE(dir.existe("Long ñandú directory name\\" + nombre_de(ruta))) << ruta;
    }
    EXPECT_EQ(dir.arbol("Long ñandú directory name").size(), std::size(filas));
}

TEST(unicos, en_el_directorio_temporal_tmp_avisa_y_el_resto_informa) {
    const directorio_temporal dir;
    const con_temp temp(dir.ruta());
    const std::string directorio = dir.ruta() + "\\";
    {
        const nombres_que_fallan falla(42, 5);
        EXPECT_EQ(con_ext("TMP"), "");
        EXPECT_EQ(g_peticiones.size(), 42u);
        ESPERA_AVISOS(aviso(directorio, "ERROR_ACCESS_DENIED"));
        EXPECT_EQ(toma_informes().size(), 1u);
    }
    const nombres_que_fallan falla(1, 5);
    EXPECT_EQ(con_ext("txt"), "");
    EXPECT_EQ(g_peticiones, textos{directorio + "|LUAO"});
    const informe dado = toma_el_informe();
    EXPECT_EQ(dado.expresion, "resp != 0");
    EXPECT_EQ(dado.detalle, directorio);
}

TEST(unicos, un_puntero_nulo_se_informa) {
    EXPECT_EQ(toma(lumodir_creaFicheroTemporalConExt(nullptr)), "");
    ESPERA_INFORMES("(ext) != NULL");
    EXPECT_EQ(toma(lumodir_creaFicheroUnicoEnDirectorio(nullptr, L"x")), "");
    ESPERA_INFORMES("(directorioTemporal) != NULL");
    EXPECT_EQ(toma(lumodir_creaFicheroUnicoEnDirectorio(L"C:\\", nullptr)), "");
    ESPERA_INFORMES("(ext) != NULL");
    EXPECT_EQ(toma(lumodir_creaFicheroUnicoEnDirectorio(nullptr, nullptr)), "");
    ESPERA_INFORMES("(directorioTemporal) != NULL", "(ext) != NULL");
}

namespace {

// A system whose numbers do not move on: each name is the prefix and 1, a number more while that file is there.
UINT WINAPI nombra_sin_avanzar(const wchar_t* directorio, const wchar_t* prefijo, UINT, wchar_t* nombre) {
    g_peticiones.push_back(u8(prefijo));
    for (unsigned numero = 1; numero < 1000; ++numero) {
        const texto_w ruta =
            texto_w(directorio) + w("\\" + u8(prefijo).substr(0, 3) + std::to_string(numero) + ".tmp");
        const HANDLE h = ::CreateFileW(ruta.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
        if (h != INVALID_HANDLE_VALUE) {
            ::CloseHandle(h);
            std::copy_n(ruta.c_str(), ruta.size() + 1, nombre);
            return numero;
        }
    }
    return 0;
}

std::string prefijo_numero(unsigned contador) {
    return std::string("LU") + (contador < 20 ? static_cast<char>('A' + contador) : '0') + "O";
}

}  // namespace

TEST(unicos, los_nombres_que_ya_estan_se_saltan_con_el_prefijo_siguiente) {
    const sustituye nombrar(sistema.GetTempFileNameW, nombra_sin_avanzar);
    for (const unsigned ocupados : {0u, 1u, 5u, 19u, 20u, 21u, 40u, 149u}) {
        SCOPED_TRACE(ocupados);
        const directorio_temporal dir;
        textos esperados;
        for (unsigned i = 0; i < ocupados; ++i) {
            const std::string nombre =
                i < 20 ? prefijo_numero(i).substr(0, 3) + "1.txt" : "LU0" + std::to_string(i - 19) + ".txt";
            dir.fichero(nombre, "mine");
            esperados.push_back(nombre);
        }
        g_peticiones.clear();
        const std::string ruta = unico(dir.ruta(), "txt");
        const std::string nombre = ocupados < 20 ? prefijo_numero(ocupados).substr(0, 3) + "1.txt"
                                                 : "LU0" + std::to_string(ocupados - 19) + ".txt";
        EXPECT_EQ(ruta, dir.ruta(nombre));
        EXPECT_EQ(dir.contenido(nombre), "");
        textos prefijos;
        for (unsigned i = 0; i <= ocupados; ++i) {
            prefijos.push_back(prefijo_numero(i));
        }
        EXPECT_EQ(g_peticiones, prefijos);
        for (const std::string& otro : esperados) {
            EXPECT_EQ(dir.contenido(otro), "mine") << otro;  // nothing was replaced
        }
        esperados.push_back(nombre);
        std::sort(esperados.begin(), esperados.end());
        EXPECT_EQ(dir.arbol(), esperados);  // no .tmp is left
    }
}

TEST(unicos, a_los_150_nombres_ocupados_se_informa_y_no_queda_nada_suelto) {
    const directorio_temporal dir;
    fallos f;
    f.falla_siempre("MoveFileExW", ERROR_ALREADY_EXISTS);
    const std::string ruta = unico(dir.ruta(), "txt");
    ESPERA_INFORMES("contador < 150");
    EXPECT_EQ(f.cuenta("GetTempFileNameW"), 150u);
    EXPECT_EQ(f.cuenta("MoveFileExW"), 150u);
    EXPECT_TRUE(tiene_forma(nombre_de(ruta), "LU0", ".txt")) << ruta;  // the last candidate
    EXPECT_EQ(dir.arbol(), textos{});
}

TEST(unicos, un_sistema_que_deja_de_dar_nombres_acaba_la_busqueda) {
    const directorio_temporal dir;
    for (const char* nombre : {"LUA1.ñ", "LUB1.ñ"}) {
        dir.fichero(nombre, "mine");
    }
    const sustituye nombrar(sistema.GetTempFileNameW, nombra_sin_avanzar);
    fallos f;
    f.falla_siempre("GetTempFileNameW", ERROR_DISK_FULL, 1);
    EXPECT_EQ(unico(dir.ruta(), "ñ"), "");
    EXPECT_EQ(f.cuenta("GetTempFileNameW"), 1u);
    std::vector<informe> informes = toma_informes();
    ASSERT_EQ(informes.size(), 1u);
    EXPECT_EQ(informes[0].expresion, "resp != 0");
    EXPECT_EQ(informes[0].detalle, dir.ruta());
    EXPECT_EQ(unico(dir.ruta("missing"), "ñ"), "");
    informes = toma_informes();
    ASSERT_EQ(informes.size(), 1u);
    EXPECT_EQ(informes[0].detalle, dir.ruta("missing"));
    EXPECT_EQ(dir.arbol(), (textos{"LUA1.ñ", "LUB1.ñ"}));
}

TEST(unicos, un_directorio_demasiado_largo_se_informa) {
    const nombres_que_fallan falla(100, ERROR_BUFFER_OVERFLOW);
    const std::string de_259 = "C:\\" + std::string(256, 'x');
    const std::string de_260 = "C:\\" + std::string(257, 'x');
    EXPECT_EQ(unico(de_259, "txt"), "");
    ESPERA_INFORMES("resp != 0");
    EXPECT_EQ(unico(de_260, "txt"), "");
    ESPERA_INFORMES("longitud < _MAX_PATH", "resp != 0");
}

namespace {

// A system that takes directories of any length, as some do.
UINT WINAPI nombra_en_cualquiera(const wchar_t* directorio, const wchar_t* prefijo, UINT, wchar_t* nombre) {
    const texto_w ruta = texto_w(directorio) + w("\\" + u8(prefijo).substr(0, 3) + "FFFF.tmp");
    const HANDLE h =
        ::CreateFileW((w("\\\\?\\") + ruta).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    if (h == INVALID_HANDLE_VALUE) {
        return 0;
    }
    ::CloseHandle(h);
    std::copy_n(ruta.c_str(), ruta.size() + 1, nombre);
    return 0xFFFF;
}

}  // namespace

TEST(unicos, un_directorio_sin_sitio_para_un_nombre_cuenta_como_que_falta) {
    const directorio_temporal dir;
    const sustituye nombrar(sistema.GetTempFileNameW, nombra_en_cualquiera);
    const std::size_t base = dir.ruta().size() + 1;
    for (const std::size_t unidades : {246u, 247u, 248u, 256u, 259u, 300u}) {
        SCOPED_TRACE(unidades);
        dir.limpia();
        const std::size_t faltan = unidades - base;
        const std::string largo = std::string(100, 'a') + "\\" + std::string(faltan - 101, 'b');
        const std::string ruta = dir.directorio(largo);
        ASSERT_EQ(ruta.size(), unidades);
        fallos f;
        if (unidades <= 246) {
            EXPECT_EQ(unico(ruta, "año"), ruta + "\\LUAFFFF.año");
            EXPECT_EQ(dir.arbol(largo), textos{largo + "\\LUAFFFF.año"});
            continue;
        }
        EXPECT_EQ(unico(ruta, "año"), "");
        EXPECT_EQ(toma_expresiones(),
                  unidades < 260 ? textos{"resp != 0"} : (textos{"longitud < _MAX_PATH", "resp != 0"}));
        EXPECT_EQ(f.cuenta("GetTempFileNameW"), 0u);
        EXPECT_EQ(dir.arbol(largo), textos{});
    }
}

TEST(unicos, mientras_otro_mira_el_fichero_se_insiste_con_el_mismo_nombre) {
    for (const DWORD codigo : {DWORD{ERROR_ACCESS_DENIED}, DWORD{ERROR_SHARING_VIOLATION}}) {
        const directorio_temporal dir;
        fallos f;
        f.falla_siempre("MoveFileExW", codigo, 5);
        const std::string ruta = unico(dir.ruta(), "txt");
        EXPECT_EQ(dir.arbol(), textos{nombre_de(ruta)});
        EXPECT_EQ(f.cuenta("GetTempFileNameW"), 1u);
        EXPECT_EQ(f.cuenta("MoveFileExW"), 6u);
        EXPECT_EQ(toma_esperas(), std::vector<unsigned long>(5, 50));
        // For longer than that: the next one.
        f.falla_siempre("MoveFileExW", codigo, 6);
        EXPECT_NE(unico(dir.ruta(), "txt"), "");
        EXPECT_EQ(f.cuenta("GetTempFileNameW"), 3u);
        EXPECT_EQ(toma_esperas().size(), 5u);
        EXPECT_EQ(dir.arbol().size(), 2u);
    }
    // Who may not rename here at all is not kept waiting at each of the 150 names.
    {
        const directorio_temporal dir;
        fallos f;
        f.falla_siempre("MoveFileExW", ERROR_ACCESS_DENIED);
        EXPECT_NE(unico(dir.ruta(), "txt"), "");
        ESPERA_INFORMES("contador < 150");
        EXPECT_EQ(f.cuenta("MoveFileExW"), 165u);
        EXPECT_EQ(toma_esperas(), std::vector<unsigned long>(15, 50));
        EXPECT_EQ(dir.arbol(), textos{});
    }
    // A name that is taken is left at once.
    for (const DWORD codigo : {DWORD{ERROR_ALREADY_EXISTS}, DWORD{ERROR_FILE_EXISTS}}) {
        const directorio_temporal dir;
        fallos f;
        f.falla_siempre("MoveFileExW", codigo, 3);
        EXPECT_NE(unico(dir.ruta(), "txt"), "");
        EXPECT_EQ(f.cuenta("GetTempFileNameW"), 4u);
        EXPECT_TRUE(toma_esperas().empty());
        EXPECT_EQ(dir.arbol().size(), 1u);
    }
}

TEST(unicos, en_un_directorio_relativo_todo_pasa_donde_estaba_al_empezar) {
    const directorio_temporal dir;
    const como_windows windows({});  // where links are followed, it is asked first whether this is one
    dir.directorio("otro\\ñ");
    static texto_w otro;
    otro = dir.ruta_w("otro");
    const sustituye nombrar(
        sistema.GetTempFileNameW,
        static_cast<decltype(sistema.GetTempFileNameW)>(
            [](const wchar_t* directorio, const wchar_t* prefijo, UINT numero, wchar_t* nombre) WINAPI {
                const UINT hecho = ::GetTempFileNameW(directorio, prefijo, numero, nombre);
                ::SetCurrentDirectoryW(otro.c_str());
                return hecho;
            }));
    const std::string unidad = dir.ruta().substr(0, 2);
    for (const std::string& ruta : {std::string("ñ"), unidad + "ñ", std::string(".\\ñ\\")}) {
        SCOPED_TRACE(ruta);
        dir.directorio("uno\\ñ");
        const en_directorio ahi(dir.ruta_w("uno"));
        fallos f;
        f.falla_siempre("MoveFileExW", ERROR_ALREADY_EXISTS, 2);
        const std::string fichero = unico(ruta, "txt");
        EXPECT_EQ(fichero, ruta + (ruta.back() == '\\' ? "" : "\\") + nombre_de(fichero));  // as it was given
        EXPECT_EQ(dir.arbol("uno\\ñ"), textos{"uno\\ñ\\" + nombre_de(fichero)});
        EXPECT_EQ(dir.arbol("otro"), textos{"otro\\ñ\\"});
        EXPECT_EQ(f.cuenta("GetFullPathNameW"), 1u);
        dir.borra("uno\\ñ");
    }
}

TEST(unicos, lo_que_no_se_puede_borrar_al_final_se_dice_al_usuario) {
    const directorio_temporal dir;
    const sustituye nombrar(sistema.GetTempFileNameW, nombra_sin_avanzar);
    dir.fichero("LUA1.txt");
    fallos f;
    f.falla_siempre("DeleteFileW", ERROR_SHARING_VIOLATION);
    EXPECT_EQ(unico(dir.ruta(), "txt"), dir.ruta("LUB1.txt"));
    const std::vector<pregunta> preguntas = toma_preguntas();
    ASSERT_EQ(preguntas.size(), 1u);
    EXPECT_EQ(preguntas[0].codigo, static_cast<unsigned long>(ERROR_SHARING_VIOLATION));
    EXPECT_NE(preguntas[0].mensaje.find(dir.ruta("LUA1.tmp")), std::string::npos) << preguntas[0].mensaje;
    toma_avisos();
    EXPECT_EQ(toma_esperas().size(), 5u);
}

// ---- a path in a directory that is created

TEST(unicos, en_un_directorio_se_crea_el_directorio_y_no_el_fichero) {
    const directorio_temporal dir;
    const struct {
        std::string directorio;
        std::string nombre;
        std::string esperado;
    } filas[] = {
        {dir.ruta("a\\b\\ñ"), "f.txt", dir.ruta("a\\b\\ñ\\f.txt")},
        {dir.ruta("a\\c\\"), "日本.txt", dir.ruta("a\\c\\日本.txt")},
        {dir.ruta("a"), "\\f.txt", dir.ruta("a\\f.txt")},
    };
    for (const auto& fila : filas) {
        EXPECT_EQ(
            toma(lumodir_creaFicheroTemporalEnDirectorio(w(fila.directorio).c_str(), w(fila.nombre).c_str())),
            fila.esperado);
    }
    EXPECT_EQ(dir.arbol(), (textos{"a\\", "a\\b\\", "a\\b\\ñ\\", "a\\c\\"}));
    // One that cannot be made is asked about, and told.
    fallos f;
    f.falla_siempre("CreateDirectoryW", ERROR_ACCESS_DENIED);
    EXPECT_EQ(toma(lumodir_creaFicheroTemporalEnDirectorio(dir.ruta_w("no").c_str(), L"f.txt")),
              dir.ruta("no\\f.txt"));
    EXPECT_EQ(toma_preguntas().size(), 1u);
    EXPECT_EQ(toma_avisos().size(), 1u);
    toma_esperas();
}

TEST(unicos, sin_directorio_o_sin_nombre_no_hay_path_ni_mensaje) {
    const directorio_temporal dir;
    const texto_w nuevo = dir.ruta_w("new");
    EXPECT_EQ(lumodir_creaFicheroTemporalEnDirectorio(nullptr, L"f"), nullptr);
    EXPECT_EQ(lumodir_creaFicheroTemporalEnDirectorio(L"", L"f"), nullptr);
    EXPECT_EQ(lumodir_creaFicheroTemporalEnDirectorio(nuevo.c_str(), nullptr), nullptr);
    EXPECT_EQ(lumodir_creaFicheroTemporalEnDirectorio(nuevo.c_str(), L""), nullptr);
    EXPECT_EQ(lumodir_creaFicheroTemporalEnDirectorio(nullptr, nullptr), nullptr);
    EXPECT_EQ(dir.arbol(), textos{});
}

// ---- every call failing

TEST(unicos, con_cada_llamada_fallando_no_queda_nada_suelto) {
    const directorio_temporal dir;
    const con_temp temp(dir.ruta());
    const con_local_settings carpeta(dir.ruta());
    const struct {
        const char* que;
        std::function<std::string()> llama;
    } operaciones[] = {
        {"plain", [] { return toma(lumodir_creaFicheroTemporal()); }},
        {"extension", [] { return con_ext("txt"); }},
        {"unique", [&] { return unico(dir.ruta(), "txt"); }},
        {"directory", [] { return directorio_temporal_de_la_biblioteca(); }},
    };
    for (const auto& op : operaciones) {
        SCOPED_TRACE(op.que);
        std::string resultado;
        con_cada_fallo([&] { dir.limpia(); }, [&] { resultado = op.llama(); },
                       [&](const ronda& r) {
                           toma_avisos();
                           toma_informes();
                           toma_preguntas();
                           const textos hay = dir.arbol();
                           // At most the file that was given, unless the system refuses to delete what was put aside.
                           if (!r.para_siempre) {
                               EXPECT_LE(hay.size(), 1u) << r;
                               for (const std::string& nombre : hay) {
                                   EXPECT_EQ(nombre, nombre_de(resultado)) << r;
                               }
                           }
                           if (r.limpia) {
                               EXPECT_FALSE(resultado.empty()) << r;
                           }
                       });
    }
}

// ---- many at once

TEST(unicos, miles_de_ficheros_unicos_en_un_directorio) {
    const directorio_temporal dir;
    // Wine reads the directory for each name that is not there, so ten thousand take a minute and more: tools/largo stress.
    const std::size_t cuantos = std::getenv("LUMODIR_RONDAS") != nullptr ? 10'000 : 2'000;
    std::set<std::string> nombres;
    for (std::size_t i = 0; i < cuantos; ++i) {
        nombres.insert(nombre_de(unico(dir.ruta(), "dat")));
    }
    EXPECT_EQ(nombres.size(), cuantos);
    EXPECT_EQ(dir.arbol(), textos(nombres.begin(), nombres.end()));
}

namespace {

constexpr unsigned ficheros_por_proceso = 150;

void escribe_lista(const std::string& ruta, const textos& nombres) {
    const HANDLE h = ::CreateFileW(w(ruta).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    for (const std::string& nombre : nombres) {
        DWORD escritos;
        ::WriteFile(h, (nombre + "\n").data(), static_cast<DWORD>(nombre.size() + 1), &escritos, nullptr);
    }
    ::CloseHandle(h);
}

// Its datum is "directory|file for the list". The names of the two kinds of files are made in turn.
const papel i_crea_muchos("temporales_crea_muchos", [] {
    const std::string dato = u8(hijo_dato().c_str());
    const std::string directorio = dato.substr(0, dato.find('|'));
    const con_temp temp(directorio);
    hijo_listo();
    hijo_espera_fin();  // all begin together
    textos nombres;
    for (unsigned i = 0; i < ficheros_por_proceso; ++i) {
        nombres.push_back(
            nombre_de(i % 3 == 2 ? toma(lumodir_creaFicheroTemporal()) : unico(directorio, "dat")));
    }
    escribe_lista(dato.substr(dato.find('|') + 1), nombres);
    return 0;
});

}  // namespace

TEST(unicos, ocho_procesos_a_la_vez_no_reciben_nunca_el_mismo_nombre) {
    const directorio_temporal dir;
    const directorio_temporal listas;
    constexpr unsigned num_procesos = 8;
    std::vector<std::unique_ptr<proceso_hijo>> hijos;
    for (unsigned i = 0; i < num_procesos; ++i) {
        hijos.push_back(std::make_unique<proceso_hijo>("temporales_crea_muchos",
                                                       w(dir.ruta() + "|" + listas.ruta(std::to_string(i)))));
    }
    for (const auto& hijo : hijos) {
        ASSERT_TRUE(hijo->espera_listo());
    }
    for (const auto& hijo : hijos) {
        hijo->suelta();
    }
    std::multiset<std::string> nombres;
    for (unsigned i = 0; i < num_procesos; ++i) {
        EXPECT_EQ(hijos[i]->espera_fin(), 0u);
        const std::string lista = listas.contenido(std::to_string(i));
        for (std::size_t desde = 0, fin; (fin = lista.find('\n', desde)) != lista.npos; desde = fin + 1) {
            nombres.insert(lista.substr(desde, fin - desde));
        }
    }
    EXPECT_EQ(nombres.size(), num_procesos * ficheros_por_proceso);
    EXPECT_EQ(dir.arbol(), textos(nombres.begin(), nombres.end()));  // each once, and nothing else
}
