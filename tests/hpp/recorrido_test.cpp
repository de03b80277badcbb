// The walk over a tree: nothing is left out, and what could not be read is told.
#include <map>
#include <set>
#include <stdexcept>

#include "apoyo/enlace.hpp"
#include "hpp/apoyo.hpp"

namespace {

using lumodir::entrada;
using lumodir::lectura;
using lumodir::opciones_recorrido;
using lumodir::recorre;
using textos = std::vector<std::wstring>;

class recorrido : public hpp::prueba_de_disco {
protected:
    recorrido() {
        fichero(L"a.txt");
        fichero(L".git\\config");
        fichero(L".git\\refs\\.oculto\\rama");
        fichero(L"sub\\名.txt");
        hpp::fs::create_directory(base / L"vacio");
    }
    // Every entry as its path below the base; a directory ends in '\', one that was not read in '!'.
    textos vistos(opciones_recorrido opciones = {}) const {
        textos todos;
        for (const entrada& e : recorre(base, std::move(opciones))) {
            todos.push_back(relativa(e) + (!e ? L"!" : e.es_directorio() ? L"\\" : L""));
        }
        std::sort(todos.begin(), todos.end());
        return todos;
    }
    std::wstring relativa(const entrada& e) const {
        return e.ruta().wstring().substr(base.wstring().size() + 1);
    }
};

TEST_F(recorrido, no_deja_nada_fuera) {
    EXPECT_EQ(vistos(),
              (textos{L".git\\", L".git\\config", L".git\\refs\\", L".git\\refs\\.oculto\\",
                      L".git\\refs\\.oculto\\rama", L"a.txt", L"sub\\", L"sub\\名.txt", L"vacio\\"}));
    opciones_recorrido una;
    una.profundidad = 0;
    EXPECT_EQ(vistos(una), (textos{L".git\\", L"a.txt", L"sub\\", L"vacio\\"}));
    una.profundidad = 1;
    EXPECT_EQ(vistos(una).size(), 7u);
    const lumodir::recorrido_hecho hecho = lumodir::recorre(base, [](const entrada&) {});
    EXPECT_TRUE(hecho);
    EXPECT_EQ(hecho.cuenta.ficheros, 4u);
    EXPECT_EQ(hecho.cuenta.directorios, 5u);
    EXPECT_EQ(hecho.cuenta.bytes, 12u);
    EXPECT_EQ(hecho.cuenta.sin_leer, 0u);
}

TEST_F(recorrido, da_lo_que_el_directorio_sabe) {
    const hpp::fs::path a = base / L"a.txt";
    ASSERT_TRUE(lumodir::timefich::asignar_fecha_fichero_UTC(a, 1700000001));
    ASSERT_TRUE(::SetFileAttributesW(a.c_str(), FILE_ATTRIBUTE_READONLY));
    ASSERT_TRUE(lumodir::timefich::asignar_fecha_fichero_UTC(base / L".git\\config", -86399));
    std::map<std::wstring, entrada> por_nombre;  // entries outlive the walk
    for (const entrada& e : recorre(base)) {
        por_nombre.emplace(e.nombre(), e);
    }
    const entrada& fichero_a = por_nombre.at(L"a.txt");
    EXPECT_TRUE(fichero_a.es_fichero());
    EXPECT_TRUE(fichero_a.es_solo_lectura());
    EXPECT_FALSE(fichero_a.es_enlace());
    EXPECT_EQ(fichero_a.bytes(), 3u);
    EXPECT_EQ(fichero_a.ruta(), a);
    EXPECT_EQ(fichero_a.ruta_extendida().wstring(), L"\\\\?\\" + a.wstring());
    EXPECT_EQ(fichero_a.modificacion_UTC(), 1700000001);
    EXPECT_EQ(lumodir::timefich::convertir_fecha(fichero_a.modificacion()),
              lumodir::timefich::convierte_timet_UTC_a_timet_local(1700000001));
    EXPECT_EQ(por_nombre.at(L"config").modificacion_UTC(),
              lumodir::timefich::obtener_fecha_fichero_UTC(base / L".git\\config"));
    const entrada& rama = por_nombre.at(L"rama");
    EXPECT_EQ(rama.profundidad(), 3u);
    EXPECT_EQ(por_nombre.at(L"sub").profundidad(), 0u);
    EXPECT_TRUE(por_nombre.at(L"sub").es_directorio());
    EXPECT_EQ(por_nombre.at(L"sub").bytes(), 0u);
    EXPECT_EQ(rama.lectura(), lectura::bien);
    EXPECT_FALSE(rama.error());
    ::SetFileAttributesW(a.c_str(), FILE_ATTRIBUTE_NORMAL);
}

// The path that was given is the path that is shown, whatever it looks like.
TEST_F(recorrido, muestra_la_ruta_como_se_dio) {
    wchar_t antes[MAX_PATH];
    ::GetCurrentDirectoryW(MAX_PATH, antes);
    ASSERT_TRUE(::SetCurrentDirectoryW(base.c_str()));
    std::set<std::wstring> rutas;
    bool cambiado = false;
    for (const entrada& e : recorre(L"sub/..\\.git")) {
        rutas.insert(e.ruta());
        // What the walk goes through was fixed when it began.
        cambiado = cambiado || ::SetCurrentDirectoryW(L"C:\\");
    }
    ::SetCurrentDirectoryW(antes);
    EXPECT_TRUE(cambiado);
    EXPECT_EQ(rutas,
              (std::set<std::wstring>{L"sub/..\\.git\\config", L"sub/..\\.git\\refs",
                                      L"sub/..\\.git\\refs\\.oculto", L"sub/..\\.git\\refs\\.oculto\\rama"}));
    const std::wstring con_prefijo = L"\\\\?\\" + base.wstring() + L"\\sub";
    for (const entrada& e : recorre(con_prefijo)) {
        EXPECT_EQ(e.ruta().wstring(), con_prefijo + L"\\名.txt");
    }
}

// Missing, a file, unreadable and empty are different answers.
TEST_F(recorrido, dice_lo_que_no_pudo_leer) {
    const auto de_la_raiz = [](const auto& directorio) { return recorre(directorio, [](const entrada&) {}); };
    struct fila {
        std::wstring directorio;
        lectura esperada;
    };
    const fila filas[] = {
        {base / L"vacio", lectura::bien},
        {base / L"falta", lectura::falta},
        {base / L"falta\\mas", lectura::falta},
        {L"", lectura::falta},
        {L"   ", lectura::falta},
        {base / L"a.txt", lectura::no_es_directorio},
    };
    for (const fila& f : filas) {
        const lumodir::recorrido_hecho hecho = de_la_raiz(f.directorio);
        EXPECT_EQ(hecho.raiz, f.esperada) << f.directorio.size();
        EXPECT_EQ(static_cast<bool>(hecho), f.esperada == lectura::bien);
        EXPECT_EQ(hecho.cuenta.sin_leer, f.esperada == lectura::bien ? 0u : 1u);
        EXPECT_EQ(hecho.cuenta.directorios, 0u);
    }
    EXPECT_EQ(de_la_raiz(nullptr).raiz, lectura::falta);
    // Held by somebody who lets nobody in.
    const HANDLE solo = ::CreateFileW((base / L".git").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    ASSERT_NE(solo, INVALID_HANDLE_VALUE);
    EXPECT_EQ(vistos(), (textos{L".git!", L".git\\", L"a.txt", L"sub\\", L"sub\\名.txt", L"vacio\\"}));
    int fallos = 0;
    const auto hecho = recorre(base, [&](const entrada& e) {
        if (!e) {
            ++fallos;
            EXPECT_EQ(e.lectura(), lectura::ilegible);
            EXPECT_EQ(e.codigo(), static_cast<unsigned long>(ERROR_SHARING_VIOLATION));
            EXPECT_EQ(e.error().value(), ERROR_SHARING_VIOLATION);
            EXPECT_TRUE(e.es_directorio());
        }
    });
    ::CloseHandle(solo);
    EXPECT_EQ(fallos, 1);
    EXPECT_FALSE(hecho);
    EXPECT_EQ(hecho.raiz, lectura::bien);
    EXPECT_EQ(hecho.cuenta.sin_leer, 1u);
    // Gone between its entry and its opening.
    std::vector<lectura> lecturas;
    for (const entrada& e : recorre(base)) {
        if (e.nombre() == L"vacio") {
            lecturas.push_back(e.lectura());
            hpp::fs::remove(base / L"vacio");
        }
    }
    EXPECT_EQ(lecturas, (std::vector<lectura>{lectura::bien, lectura::falta}));
}

TEST_F(recorrido, entra_donde_el_sistema_cambiaria_el_nombre) {
    const std::wstring literal = L"\\\\?\\" + base.wstring() + L"\\";
    const textos nombres{L"sub.", L"sub ", L"con"};
    for (const std::wstring& nombre : nombres) {
        ASSERT_TRUE(::CreateDirectoryW((literal + nombre).c_str(), nullptr));
        ::CloseHandle(::CreateFileW((literal + nombre + L"\\dentro.").c_str(), GENERIC_WRITE, 0, nullptr,
                                    CREATE_NEW, 0, nullptr));
    }
    const textos todos = vistos();
    for (const std::wstring& nombre : nombres) {
        EXPECT_EQ(std::count(todos.begin(), todos.end(), nombre + L"\\dentro."), 1) << nombre.size();
    }
    EXPECT_EQ(std::count(todos.begin(), todos.end(), L"sub\\名.txt"), 1);
    for (const entrada& e : recorre(base)) {
        if (e.nombre() == L"dentro.") {
            EXPECT_TRUE(::DeleteFileW(e.ruta_extendida().c_str()));
        }
    }
    for (const std::wstring& nombre : nombres) {
        EXPECT_TRUE(::RemoveDirectoryW((literal + nombre).c_str()));
    }
}

TEST_F(recorrido, no_entra_en_enlaces) {
    const apoyo::enlace arriba((base / L"sub").u8string(), "arriba", "..");
    if (!arriba.hecho()) {
        GTEST_SKIP() << arriba.motivo();
    }
    bool visto = false;
    const auto hecho = recorre(base, [&](const entrada& e) {
        visto = visto || (e.nombre() == L"arriba" && e.es_enlace() && e.es_directorio());
    });
    EXPECT_TRUE(visto);
    EXPECT_TRUE(hecho);
    EXPECT_EQ(hecho.cuenta.ficheros, 4u);
    EXPECT_EQ(hecho.cuenta.directorios, 6u);
    // The one that was named is entered.
    EXPECT_EQ(recorre(base / L"sub\\arriba", [](const entrada&) {}).cuenta.ficheros, 4u);
}

TEST_F(recorrido, se_para_y_se_acota) {
    const auto hecho = recorre(base, [](const entrada& e) {
        return e.es_fichero() ? lumodir::paso::para : lumodir::paso::no_entres;
    });
    EXPECT_TRUE(hecho.parado);
    EXPECT_FALSE(hecho);
    EXPECT_EQ(hecho.cuenta.ficheros, 1u);
    const auto sin_git = recorre(base, [](const entrada& e) {
        return e.nombre() == L".git" ? lumodir::paso::no_entres : lumodir::paso::sigue;
    });
    EXPECT_TRUE(sin_git);
    EXPECT_EQ(sin_git.cuenta.ficheros, 2u);

    std::atomic<bool> para{false};
    opciones_recorrido opciones;
    opciones.para = &para;
    unsigned vistas = 0;
    lumodir::recorrido todo = recorre(base, opciones);
    for (const entrada& e : todo) {
        (void)e;
        para = ++vistas == 2;
    }
    EXPECT_EQ(vistas, 2u);
    EXPECT_TRUE(todo.parado());
    EXPECT_FALSE(todo.siguiente());
    EXPECT_EQ(todo.cuenta().ficheros + todo.cuenta().directorios, 2u);

    unsigned preguntas = 0;
    opciones_recorrido con_progreso;
    con_progreso.progreso = [&](const lumodir::cuenta_recorrido& cuenta) {
        EXPECT_EQ(cuenta.ficheros + cuenta.directorios, preguntas);
        return ++preguntas == 4;
    };
    EXPECT_EQ(vistos(con_progreso).size(), 3u);
    con_progreso.progreso = [](const lumodir::cuenta_recorrido& c) -> bool {
        return c.directorios == 1 ? throw std::runtime_error("no") : false;
    };
    EXPECT_THROW(recorre(
                     base, [](const entrada&) {}, con_progreso),
                 std::runtime_error);
    EXPECT_THROW(recorre(base, [](const entrada&) { throw std::runtime_error("no"); }), std::runtime_error);
    // Nothing is left open: nobody could remove what is.
    EXPECT_TRUE(lumodir::cdir::borra_directorio_y_subdirectorios_si_se_puede(base));
}

TEST_F(recorrido, va_hasta_donde_haga_falta) {
    hpp::fs::path hondo = L"\\\\?\\" + base.wstring();
    for (int i = 0; i < 40; ++i) {
        hondo /= std::wstring(30, L'd');
        ASSERT_TRUE(::CreateDirectoryW(hondo.c_str(), nullptr));
    }
    ::CloseHandle(::CreateFileW((hondo / L"fin").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
    const auto hecho = recorre(base, [&](const entrada& e) {
        if (e.nombre() == L"fin") {
            EXPECT_EQ(e.profundidad(), 40u);
            EXPECT_EQ(e.ruta_extendida(), hondo / L"fin");
            EXPECT_EQ(lumodir::get_tamanyo_fichero(e.ruta()), 0u);
        }
    });
    EXPECT_TRUE(hecho);
    EXPECT_EQ(hecho.cuenta.ficheros, 5u);
    EXPECT_EQ(hecho.cuenta.directorios, 45u);
    EXPECT_TRUE(lumodir::cdir::borra_directorio_y_subdirectorios_si_se_puede(base));
}

// Wherever the memory runs out, nothing of the library stays behind.
TEST_F(recorrido, sin_memoria_no_queda_nada) {
    const std::wstring directorio = base.wstring();
    const unsigned long long antes = lumodir::bloques_vivos();
    unsigned long fallidas = 0;
    for (bool entero = false; !entero; ++fallidas) {
        hpp::falla_la_reserva(fallidas + 1);
        try {
            (void)recorre(directorio, [](const entrada&) {});
            entero = true;
        } catch (const std::bad_alloc&) {
        }
        hpp::falla_la_reserva(0);
        EXPECT_EQ(lumodir::bloques_vivos(), antes) << "allocation " << fallidas + 1;
    }
    EXPECT_GT(fallidas, 10u);
}

// A search that breaks off: another thing stands in the place of its handle.
TEST_F(recorrido, el_enumerador_distingue_el_final_del_fallo) {
    WIN32_FIND_DATAW e;
    lumodir::dirwin::enumerador entero(base / L"*");
    EXPECT_TRUE(entero.abierto());
    while (entero.siguiente(e)) {
    }
    EXPECT_EQ(entero.codigo(), 0u);
    const lumodir::dirwin::enumerador ninguno(base / L"falta\\*");
    EXPECT_FALSE(ninguno.abierto());
    EXPECT_EQ(ninguno.codigo(), static_cast<unsigned long>(ERROR_PATH_NOT_FOUND));
    if (!lumodir::wine::estamos_en_wine()) {
        GTEST_SKIP() << "only Wine is known to look at what a handle of a search is";
    }
    static char nada[4096];
    Dirwin_u* nuevo = dirwin_crea_UNICODE((base / L"*").c_str());
    const HANDLE buena = std::exchange(nuevo->busqueda, static_cast<HANDLE>(nada));
    lumodir::dirwin::enumerador roto(nuevo);
    EXPECT_TRUE(roto.siguiente(e));  // the first one was read when it was opened
    EXPECT_FALSE(roto.siguiente(e));
    EXPECT_NE(roto.codigo(), 0u);
    EXPECT_EQ(toma_informes().size(), 1u);
    nuevo->busqueda = buena;  // to be closed
}

}  // namespace
