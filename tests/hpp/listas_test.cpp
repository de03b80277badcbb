// Lists, trees, file sets, the enumerator, file-name records.
#include <stdexcept>

#include "hpp/apoyo.hpp"

namespace {

using namespace lumodir;
using textos = std::vector<std::wstring>;
using textos_a = std::vector<std::string>;

class listas : public hpp::prueba_de_disco {
protected:
    listas() {
        fichero(L"b.txt");
        fichero(L"a.txt");
        fichero(L"c.dat");
        fichero(L"sub\\ñ.txt");
        hpp::fs::create_directory(base / L"vacio.old");
    }
};

template <class L>
textos_a nombres_de(const L& registros) {
    textos_a nombres;
    for (const Fichsdir& registro : registros) {
        nombres.emplace_back(fichsdir::nombre_fichero(registro));
    }
    std::sort(nombres.begin(), nombres.end());
    return nombres;
}

TEST_F(listas, de_un_directorio) {
    const lista_ficheros txt = cdir::lista_de_ficheros(base, L"txt");
    EXPECT_EQ(txt.path(), base.wstring());
    EXPECT_EQ(txt.vector(), (textos{L"a.txt", L"b.txt"}));
    EXPECT_EQ(hpp::todos(txt), txt.vector());
    EXPECT_EQ(txt[1], L"b.txt");
    EXPECT_EQ(txt.front(), L"a.txt");
    EXPECT_EQ(txt.back(), L"b.txt");
    EXPECT_EQ(txt.rutas(), (std::vector<hpp::fs::path>{base / L"a.txt", base / L"b.txt"}));
    EXPECT_EQ(cdir::lista_de_ficheros(base).size(), 3u);
    EXPECT_TRUE(cdir::lista_de_ficheros(base / L"vacio.old").empty());
    EXPECT_EQ(cdir::lista_de_ficherosFiltro(base, L"txt", L"a*").vector(), textos{L"a.txt"});
    EXPECT_EQ(cdir::lista_de_ficherosFiltro_en_unidad(base.root_name(),
                                                      L"\\" + base.relative_path().wstring(), L"dat", L"*")
                  .vector(),
              textos{L"c.dat"});
    EXPECT_EQ(cdir::lista_de_ficheros_en_path_filtro(base / L"*.dat").vector(), textos{L"c.dat"});
    EXPECT_EQ(cdir::lista_de_directorios(base).vector(), (textos{L"sub", L"vacio.old"}));
    lista_ficheros movida = cdir::lista_de_ficheros(base);
    lista_ficheros otra = std::move(movida);
    EXPECT_EQ(movida.size(), 0u);  // NOLINT
    EXPECT_EQ(otra.size(), 3u);
    movida = cdir::lista_de_ficheros(base, L"txt");
    otra = std::move(movida);
    EXPECT_TRUE(movida.empty());  // NOLINT
    EXPECT_EQ(otra.size(), 2u);
    EXPECT_TRUE(lumodir::existenFicheros(base));
    EXPECT_TRUE(lumodir::existenSubdirectorios(base));
    EXPECT_FALSE(lumodir::existenSubdirectorios(base / L"sub"));
    EXPECT_EQ(lumodir::lista_de_fichero(base / L"*").vector(), (textos{L"a.txt", L"b.txt", L"c.dat"}));
    EXPECT_EQ(lumodir::lista_de_fichero(base / L"*", {L"dat", L"bak"}).vector(), textos{L"c.dat"});
}

// The record of a root holds its directory without the separator: a name joined to that would be another file's.
TEST_F(listas, las_rutas_de_una_raiz_llevan_a_sus_ficheros) {
    const auto raices = [](const wchar_t* raiz) {
        std::vector<std::vector<hpp::fs::path>> todas{cdir::lista_de_directorios(raiz).rutas(),
                                                      cdir::lista_de_ficheros(raiz).rutas()};
        todas[0].insert(todas[0].end(), todas[1].begin(), todas[1].end());
        return todas[0];
    };
    const std::wstring unidad = base.root_name();
    const hpp::fs::path testigo = hpp::fs::path(unidad + L"\\lumodir_hpp_raiz.txt");
    std::ofstream(testigo) << "abc";
    wchar_t antes[MAX_PATH];
    ::GetCurrentDirectoryW(MAX_PATH, antes);
    ASSERT_TRUE(::SetCurrentDirectoryW(base.c_str()));  // any but the root
    for (const std::wstring& raiz :
         {unidad + L"\\", unidad + L"/", std::wstring(L"\\"), std::wstring(L"/")}) {
        bool esta = false;
        for (const hpp::fs::path& ruta : raices(raiz.c_str())) {
            EXPECT_NE(::GetFileAttributesW(ruta.c_str()), INVALID_FILE_ATTRIBUTES) << ruta;
            EXPECT_TRUE(ruta.has_root_directory()) << ruta;
            esta = esta || ruta.filename() == testigo.filename();
        }
        EXPECT_TRUE(esta) << raiz.size();
    }
    // Nothing before the pattern of the subdirectories is the root as well.
    const lista_ficheros de_nada = cdir::lista_de_directorios(L"");
    ASSERT_FALSE(de_nada.empty());
    EXPECT_EQ(de_nada.rutas(), cdir::lista_de_directorios(L"\\").rutas());
    // A drive with nothing behind it is its current directory where the two stand apart.
    EXPECT_EQ(cdir::lista_de_ficherosFiltro_en_unidad(unidad, L"", L"dat", L"*").rutas(),
              std::vector<hpp::fs::path>{unidad + L".\\c.dat"});
    EXPECT_EQ(cdir::lista_de_ficherosFiltro_en_unidad(nullptr, L"", L"dat", L"*").rutas(),
              std::vector<hpp::fs::path>{L"c.dat"});
    // Of a list that knows no directory, and of the current one.
    EXPECT_EQ(cdir::lista_de_ficheros_en_path_filtro(L"*.dat").rutas(), std::vector<hpp::fs::path>{L"c.dat"});
    EXPECT_EQ(cdir::lista_de_ficheros(L".", L"dat").rutas(), std::vector<hpp::fs::path>{L".\\c.dat"});
    ::SetCurrentDirectoryW(antes);
    EXPECT_TRUE(hpp::fs::remove(testigo));
    ListaFicheros_u registro = {};
    wchar_t unidad_sola[] = L"C:";
    wchar_t uno[] = L"a";
    wchar_t* nombres_suyos[] = {uno};
    registro.path = unidad_sola;
    registro.num = 1;
    registro.lista = nombres_suyos;
    const arbol::value_type de_la_raiz(&registro);  // as an element of the tree of `C:\`
    EXPECT_EQ(de_la_raiz.rutas(), std::vector<hpp::fs::path>{L"C:\\a"});
}

TEST_F(listas, de_un_arbol) {
    const arbol con_txt = lumodir::lista_de_ficheros_en_directorio_y_subdirectorios(base, L"txt");
    ASSERT_EQ(con_txt.size(), 2u);
    EXPECT_EQ(con_txt[0].path(), base.wstring());
    EXPECT_EQ(con_txt[0].vector(), (textos{L"a.txt", L"b.txt"}));
    EXPECT_EQ(con_txt[1].rutas(), std::vector<hpp::fs::path>{base / L"sub\\ñ.txt"});
    // The names of a directory are a view: iterators live as long as the tree, not as long as the view.
    auto nombre = con_txt[0].begin();
    const arbol::value_type otro = con_txt[1];
    EXPECT_EQ(*nombre, L"a.txt");
    EXPECT_EQ(otro.begin()->size(), 5u);
    EXPECT_EQ((++nombre)->size(), 5u);
    EXPECT_EQ(con_txt.begin()->path(), base.wstring());
    const arbol todo = lumodir::lista_de_ficheros_y_directorios_recursivamente(base);
    std::size_t ficheros = 0;
    for (const auto& directorio : todo) {
        ficheros += directorio.size();
    }
    EXPECT_EQ(todo.size(), 3u);
    EXPECT_EQ(ficheros, 4u);
    arbol movido = lumodir::lista_de_ficheros_y_directorios_recursivamente(base);
    arbol destino = lumodir::lista_de_ficheros_en_directorio_y_subdirectorios(base, L"txt");
    destino = std::move(movido);
    EXPECT_TRUE(movido.empty());  // NOLINT
    EXPECT_EQ(destino.size(), 3u);
    EXPECT_TRUE(lumodir::lista_de_ficheros_en_directorio_y_subdirectorios(base / L"vacio.old").empty());
}

TEST_F(listas, de_registros) {
    timefich::asignar_fecha_fichero_UTC(base / L"a.txt", 1700000000);
    lumodir::protege_fichero(base / L"a.txt");
    const auto registros = fichsdir::ficheros(base);
    EXPECT_EQ(nombres_de(registros), (textos_a{"a.txt", "b.txt", "c.dat"}));
    EXPECT_EQ(registros.begin()->protegido, CIERTO);
    auto vaciados = fichsdir::ficheros_existentes_ordenados(base.string());
    const auto ordenados = std::move(vaciados);
    EXPECT_EQ(vaciados.busca("a.txt"), nullptr);  // NOLINT: not reported either
    EXPECT_EQ(fichsdir::nombre_fichero(ordenados[0]), "a.txt");
    const Fichsdir* a = ordenados.busca("a.txt");
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(ordenados.busca("falta"), nullptr);
    EXPECT_EQ(fichsdir::path_fichero(*a), (base / L"a.txt").wstring());
    EXPECT_EQ(fichsdir::fecha_fichero(*a), timefich::convierte_timet_UTC_a_timet_local(1700000000));
    EXPECT_TRUE(fichsdir::fichero_esta_protegido(*a));
    EXPECT_FALSE(fichsdir::fichero_esta_protegido(*ordenados.busca("b.txt")));
    lumodir::desprotege_fichero(base / L"a.txt");
}

TEST_F(listas, de_nombres) {
    EXPECT_EQ(fichsdir::directorios(base).vector(), (textos{L"sub", L"vacio.old"}));
    EXPECT_EQ(fichsdir::directorios_sin_extension(base.string()).vector(), textos_a{"sub"});
    EXPECT_EQ(fichsdir::directorios_sin_ocultos(base).size(), 2u);
    hpp::fs::create_directory(base / L".git");
    EXPECT_EQ(fichsdir::directorios_incluyendo_empiezan_por_puntos(base).size(), 3u);
    EXPECT_EQ(fichsdir::nombres_directorios_cumplen_filtro(base / L"s*").vector(), textos{L"sub"});
    EXPECT_EQ(fichsdir::nombres_ficheros(base).size(), 3u);
    EXPECT_EQ(fichsdir::nombres_ficheros_cumplen_filtro(base / L"*.dat").vector(), textos{L"c.dat"});
    EXPECT_EQ(fichsdir::nombres_ficheros_con_extension(base, L"DAT").vector(), textos{L"c.dat"});
    EXPECT_EQ(fichsdir::nombres_base_en_mayusculas_ficheros_con_extension(base.string(), "txt").vector(),
              (textos_a{"A", "B"}));
    EXPECT_EQ(hpp::todos(fichsdir::nombres_base_en_minusculas_ficheros_con_extension(base.string(), "txt")),
              (textos_a{"a", "b"}));
}

// Wherever the memory for a copy runs out, nothing of the library stays behind.
TEST_F(listas, sin_memoria_para_la_copia_no_queda_nada) {
    const std::wstring directorio = base.wstring();
    const std::wstring_view vista = directorio;
    const textos extensiones{L"dat", L"txt"};
    void (*const operaciones[])(std::wstring_view, const textos&) = {
        [](std::wstring_view d, const textos&) { (void)cdir::lista_de_ficheros(d).vector(); },
        [](std::wstring_view d, const textos&) {
            for (const auto& uno : lumodir::lista_de_ficheros_en_directorio_y_subdirectorios(d)) {
                (void)uno.rutas();
            }
        },
        [](std::wstring_view d, const textos& e) {
            (void)lumodir::lista_de_fichero(std::wstring(d) + L"\\*", e).vector();
        },
        [](std::wstring_view, const textos&) {
            const std::wstring largo(1000, L'x');
            (void)cdir::construye_path(std::wstring_view(largo), L"a", std::wstring_view(largo)).ruta();
        },
        [](std::wstring_view, const textos&) {
            (void)lumodir::nomsfich::registro("a name longer than any string keeps within.txt")
                .nombre_fichero()
                .ruta();
        },
        [](std::wstring_view, const textos&) {
            (void)lumodir::lumoreg::lee_valores_cadena_clave_ex(
                lumodir::lumoreg::vista::proceso, lumodir::lumoreg::raiz::current_user, L"Environment");
        },
    };
    for (const auto& operacion : operaciones) {
        const unsigned long long antes = lumodir::bloques_vivos();
        unsigned long fallidas = 0;
        for (bool entera = false; !entera; ++fallidas) {
            hpp::falla_la_reserva(fallidas + 1);
            try {
                operacion(vista, extensiones);
                entera = true;
            } catch (const std::bad_alloc&) {
            }
            hpp::falla_la_reserva(0);
            EXPECT_EQ(lumodir::bloques_vivos(), antes)
                << "operation " << &operacion - operaciones << ", allocation " << fallidas + 1;
        }
        EXPECT_GT(fallidas, 1u) << "operation " << &operacion - operaciones << " allocates nothing";
    }
}

TEST_F(listas, se_paran) {
    int veces = 0;
    const auto sigue = [&] {
        ++veces;
        return false;
    };
    const auto ficheros = fichsdir::ficheros_prog(base.string(), sigue);
    EXPECT_FALSE(ficheros.interrumpido);
    EXPECT_EQ(nombres_de(ficheros.elementos), (textos_a{"a.txt", "b.txt", "c.dat"}));
    EXPECT_GE(veces, 5);
    const auto nada = fichsdir::nombres_ficheros_prog(base.string(), [] { return true; });
    EXPECT_TRUE(nada.interrumpido);
    EXPECT_TRUE(nada.elementos.empty());
    EXPECT_EQ(fichsdir::nombres_ficheros_prog(base.string(), sigue).elementos.size(), 3u);
    EXPECT_EQ(fichsdir::directorios_prog(base.string(), sigue).elementos.vector(),
              (textos_a{"sub", "vacio.old"}));
    EXPECT_THROW(fichsdir::ficheros_prog(base.string(), []() -> bool { throw std::runtime_error("no"); }),
                 std::runtime_error);
}

TEST_F(listas, el_enumerador) {
    dirwin::enumerador entradas(base / L"*.txt");
    textos nombres;
    for (WIN32_FIND_DATAW e; entradas.siguiente(e);) {
        EXPECT_FALSE(dirwin::es_directorio(e));
        EXPECT_FALSE(dirwin::es_solo_lectura(e));
        nombres.emplace_back(e.cFileName);
    }
    std::sort(nombres.begin(), nombres.end());
    EXPECT_EQ(nombres, (textos{L"a.txt", L"b.txt"}));
    WIN32_FIND_DATAW e;
    EXPECT_FALSE(entradas.siguiente(e));
    nombres.clear();
    for (const WIN32_FIND_DATAW& una : dirwin::enumerador(base / L"*.txt")) {
        nombres.emplace_back(una.cFileName);
    }
    std::sort(nombres.begin(), nombres.end());
    EXPECT_EQ(nombres, (textos{L"a.txt", L"b.txt"}));
    for (const WIN32_FIND_DATAW& una : dirwin::enumerador(base / L"vacio.old\\*.txt")) {
        ADD_FAILURE() << una.dwFileAttributes;
    }
    // The search that gives way ends at once: it would keep its directory from being removed.
    const hpp::fs::path otro = base / L"otro";
    hpp::fs::create_directory(otro);
    dirwin::enumerador dentro(otro / L"*");
    EXPECT_TRUE(dentro.siguiente(e));
    const unsigned long long antes = lumodir::bloques_vivos();
    dentro = std::move(entradas);
    EXPECT_LT(lumodir::bloques_vivos(), antes);
    EXPECT_TRUE(dirwin::cumple_filtro("readme.txt", "read*"));
    EXPECT_FALSE(dirwin::cumple_filtro("readme.txt", "x*"));
}

class nombres : public hpp::prueba {};

TEST_F(nombres, registros) {
    nomsfich::registro uno("Informe.Final.DOC");
    EXPECT_EQ(uno.nombre_base_fichero(), "informe.final");
    EXPECT_EQ(uno.extension_fichero(), "doc");
    EXPECT_EQ(uno.nombre_fichero(), "informe.final.doc");
    const nomsfich::registro otro = uno.cambia_extension("PDF");
    EXPECT_TRUE(otro == nomsfich::registro("informe.final", "pdf"));
    EXPECT_TRUE(otro != uno);
    EXPECT_TRUE(uno < otro);
    EXPECT_LT(uno.compara(otro), 0);
    EXPECT_TRUE(uno.copia() == uno);
    const nomsfich::registro movido = std::move(uno);
    EXPECT_EQ(movido.extension_fichero(), "doc");
    EXPECT_TRUE(nomsfich::misma_extension("a", "a"));
    EXPECT_FALSE(nomsfich::mismo_nombre_base("a", "A"));
    EXPECT_EQ(nomsfich::nombre_base_path_completo("C:\\Dir\\Photo.PNG"), "photo");
}

}  // namespace
