// What Windows does and Wine does not, to the search for processes and the deletion of registry keys: behind the imitation
// of Windows.
#include "apoyo/como_windows.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/hijo.hpp"
#include "companions/arr.h"
#include "lumoreg.h"
#include "registro_de_pruebas.hpp"
#include "taskproc.h"

using namespace apoyo;

namespace {

const papel con_biblioteca("con_biblioteca_propia", [] {
    if (::LoadLibraryW(hijo_dato().c_str()) == nullptr) {
        return 1;
    }
    hijo_listo();
    hijo_espera_fin();
    return 5;
});

// How many records a search gives of a process.
unsigned cuantos(const std::string& modulo, DWORD pid) {
    unsigned num = 0;
    ArrPunteroConTipo* lista = nullptr;
    if (taskproc_busca_proceso_abierto(w(modulo).c_str(), &lista) == 1) {
        for (unsigned long i = 0; i < arr_NumElemsPuntero(lista); ++i) {
            num += static_cast<const Taskproc*>(arr_GetPunteroConTipo(lista, i))->pid == pid ? 1 : 0;
        }
        arr_DestruyeEstructurasConTipo(&lista, reinterpret_cast<ArrDestruyeRegistro>(taskproc_destruye));
    }
    return num;
}

}  // namespace

TEST(procesos_en_windows, la_biblioteca_de_un_programa_de_32_bits_se_encuentra) {
    const directorio_temporal d;
    const std::string numero = std::to_string(::GetCurrentProcessId());
    const std::string biblioteca = "lumo_" + numero + "_32.dll";
    const std::string programa = "lumo_" + numero + "_32.exe";
    wchar_t del_sistema[MAX_PATH];
    ::GetSystemDirectoryW(del_sistema, MAX_PATH);
    ASSERT_TRUE(
        ::CopyFileW((texto_w(del_sistema) + w("\\version.dll")).c_str(), d.ruta_w(biblioteca).c_str(), TRUE));
    ASSERT_TRUE(::CopyFileW(ruta_del_ejecutable().c_str(), d.ruta_w(programa).c_str(), TRUE));
    const proceso_hijo hijo("con_biblioteca_propia", d.ruta_w(biblioteca), d.ruta_w(programa));
    ASSERT_TRUE(hijo.espera_listo());

    como_windows windows({});
    windows.es_de_32_bits(hijo.pid());
    EXPECT_EQ(cuantos(biblioteca, hijo.pid()), 1u);
    EXPECT_EQ(cuantos(programa, hijo.pid()), 1u) << "it stands twice in the list, in two spellings";
    EXPECT_GT(windows.intervenciones(), 0u);
    EXPECT_EQ(windows.hilos_ajenos(), 0u) << "a heap was asked for that nobody reads";
    hijo.suelta();
    EXPECT_EQ(hijo.espera_fin(), 5u);
}

namespace {

using textos = std::vector<std::string>;

constexpr unsigned long maquina = 3;  // HKEY_LOCAL_MACHINE

// HKEY_LOCAL_MACHINE\SOFTWARE stands twice in the registry. Here both views hold, below a key of the test's own, the
// tree `p\t\a\hondo`, which is deleted, and `precioso\x`, which nobody names.
class dos_vistas {
public:
    dos_vistas() {
        for (const auto vista : {0, 1}) {
            HKEY software = nullptr;
            ::RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE", 0,
                            KEY_ALL_ACCESS | (vista == 0 ? KEY_WOW64_64KEY : KEY_WOW64_32KEY), &software);
            software_[vista] = software;
            borra_arbol(software, propia_.c_str());
        }
    }
    ~dos_vistas() {
        for (const auto vista : {0, 1}) {
            borra_arbol(software_[vista], propia_.c_str());
            ::RegCloseKey(software_[vista]);
        }
    }
    dos_vistas(const dos_vistas&) = delete;
    dos_vistas& operator=(const dos_vistas&) = delete;

    bool siembra() const {
        for (const auto vista : {0, 1}) {
            for (const char* ruta : {"p\\t\\a\\hondo", "precioso\\x"}) {
                HKEY clave = nullptr;
                if (::RegCreateKeyExW(software_[vista], abajo(ruta).c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                                      nullptr, &clave, nullptr) != ERROR_SUCCESS) {
                    return false;
                }
                ::RegCloseKey(clave);
            }
        }
        return true;
    }
    HKEY software(int vista) const { return software_[vista]; }
    texto_w abajo(const char* ruta) const { return propia_ + L"\\" + w(ruta); }
    HKEY abre(int vista, const char* ruta) const {
        HKEY clave = nullptr;
        ::RegOpenKeyExW(software_[vista], abajo(ruta).c_str(), REG_OPTION_OPEN_LINK, KEY_ALL_ACCESS, &clave);
        return clave;
    }
    bool esta(int vista, const char* ruta) const {
        const HKEY clave = abre(vista, ruta);
        ::RegCloseKey(clave);
        return clave != nullptr;
    }
    texto_w nombre_de_sistema(int vista, const char* ruta) const {
        const HKEY clave = abre(vista, ruta);
        const texto_w nombre = nombre_de_clave(clave);
        ::RegCloseKey(clave);
        return nombre;
    }
    void borra(bool ancha, const char* padre, const char* nombre) const {
        const texto_w entero = L"SOFTWARE\\" + abajo(padre);
        if (ancha) {
            lumoreg_borra_clave_u(maquina, entero.c_str(), w(nombre).c_str());
        } else {
            lumoreg_borra_clave(maquina, u8(entero).c_str(), nombre);
        }
    }

private:
    const texto_w propia_ = w("lumodir-pruebas-" + std::to_string(::GetCurrentProcessId()));
    HKEY software_[2] = {};
};

}  // namespace

TEST(registro_en_windows, una_clave_sin_derechos_no_lleva_a_la_otra_vista) {
    const struct {
        const char* que;
        const char* falta;   // in the view of 64 bits; NULL: nothing
        const char* negada;  // there too
        bool se_va[2];       // the tree, in the view of 64 bits and in that of 32
        textos informes;     // without the path that all begin with
    } filas[] = {
        {"nothing in the way", nullptr, nullptr, {true, false}, {}},
        {"no parent there", "p", nullptr, {true, true}, {}},
        {"no right to the parent", nullptr, "p", {false, false}, {}},
        {"no right to the key",
         nullptr,
         "p\\t",
         {false, false},
         {"clave_abierta == CIERTO [p\\t]", "resultado == ERROR_SUCCESS [t]"}},
        {"no right to what is below",
         nullptr,
         "p\\t\\a",
         {false, false},
         {"clave_abierta == CIERTO [p\\t\\a]", "resultado == ERROR_SUCCESS [a]",
          "resultado == ERROR_SUCCESS [t]"}},
    };
    for (const auto& f : filas) {
        for (const bool ancha : {true, false}) {
            SCOPED_TRACE(testing::Message() << f.que << (ancha ? ", wide" : ", 8-bit"));
            const dos_vistas d;
            if (!d.siembra()) {
                GTEST_SKIP() << "no right to write under HKEY_LOCAL_MACHINE";
            }
            ASSERT_NE(d.nombre_de_sistema(0, "p"), d.nombre_de_sistema(1, "p"));
            if (f.falta != nullptr) {
                borra_arbol(d.software(0), d.abajo(f.falta).c_str());
            }
            como_windows windows({});
            if (f.negada != nullptr) {
                const HKEY negada = d.abre(0, f.negada);
                windows.no_se_deja_abrir(negada);
                ::RegCloseKey(negada);
            }
            d.borra(ancha, "p", "t");
            textos informes;
            for (std::string informe : toma_informes_con_detalle()) {
                const std::string principio = "SOFTWARE\\" + u8(d.abajo(""));
                if (const auto i = informe.find(principio); i != informe.npos) {
                    informe.erase(i, principio.size());
                }
                informes.push_back(informe);
            }
            EXPECT_EQ(informes, f.informes);
            EXPECT_EQ(windows.intervenciones() != 0, f.negada != nullptr);
            for (const auto vista : {0, 1}) {
                EXPECT_EQ(d.esta(vista, "p\\t"), !f.se_va[vista]) << vista;
                EXPECT_EQ(d.esta(vista, "p\\t\\a\\hondo"), !f.se_va[vista]) << vista;
                EXPECT_TRUE(d.esta(vista, "precioso\\x")) << vista;
            }
        }
    }
}

TEST(registro_en_windows, un_enlace_a_la_otra_vista_se_va_y_lo_que_apunta_queda) {
    for (const int vista : {0, 1}) {
        for (const bool ancha : {true, false}) {
            SCOPED_TRACE(testing::Message() << "from view " << vista << (ancha ? ", wide" : ", 8-bit"));
            const dos_vistas d;
            if (!d.siembra()) {
                GTEST_SKIP() << "no right to write under HKEY_LOCAL_MACHINE";
            }
            borra_arbol(d.software(vista), d.abajo("p\\t\\a\\hondo").c_str());
            crea_enlace(d.software(vista), d.abajo("p\\t\\a\\enlace"),
                        d.nombre_de_sistema(1 - vista, "precioso"));
            // Whoever names no view comes to that of 32 bits where the other has no such key.
            if (vista == 1) {
                borra_arbol(d.software(0), d.abajo("p").c_str());
            }
            const como_windows windows({});
            d.borra(ancha, "p", "t");
            EXPECT_EQ(toma_informes_con_detalle(), textos{});
            EXPECT_FALSE(d.esta(vista, "p\\t"));
            EXPECT_TRUE(d.esta(0, "precioso\\x"));
            EXPECT_TRUE(d.esta(1, "precioso\\x"));
            EXPECT_EQ(d.esta(1, "p\\t\\a\\hondo"), vista == 0);
        }
    }
}
