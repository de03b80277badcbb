// Processes: searches in a false system (every size of structure, every failure) and in the real one, with children
// of the test's own under names of their own that are found, by executable and by library, and ended.
#include "taskproc.h"

#include <cstddef>
#include <functional>

#include "apoyo/directorio.hpp"
#include "apoyo/hijo.hpp"
#include "companions/lumospy.h"
#include "system/taskproc.hpp"

using namespace apoyo;
using interno::i_crea_taskproc;
using interno::sistema;

static_assert(sizeof(Taskproc) == 20 && offsetof(Taskproc, pid) == 8 && offsetof(Taskproc, ruta) == 12,
              "programs rely on the packed layout");

namespace {

void destruye(ArrPunteroConTipo** lista) {
    arr_DestruyeEstructurasConTipo(lista, reinterpret_cast<ArrDestruyeRegistro>(taskproc_destruye));
    EXPECT_EQ(*lista, nullptr);
}

// "100 a.dll=C:\a.dll; ...": what a search finds; "(NULL)" when it gives no list, and the list freed.
std::string encuentra(const char* modulo, unsigned short* resultado = nullptr) {
    auto* lista = reinterpret_cast<ArrPunteroConTipo*>(0x77);  // written also when there is nothing
    const unsigned short hay = taskproc_busca_proceso_abierto(w(modulo).c_str(), &lista);
    EXPECT_EQ(hay, lista != nullptr ? 1 : 0);
    if (resultado != nullptr) {
        *resultado = hay;
    }
    if (lista == nullptr) {
        return "(NULL)";
    }
    std::string texto;
    for (unsigned long i = 0; i < arr_NumElemsPuntero(lista); ++i) {
        const auto* p = static_cast<const Taskproc*>(arr_GetPunteroConTipo(lista, i));
        texto += (i == 0 ? "" : "; ") + std::to_string(p->pid) + " " + u8(p->modulo) + "=" + u8(p->ruta);
        const wchar_t* const ruta = p->ruta;  // the record is packed: nothing may refer to its field
        EXPECT_EQ(taskproc_ruta_proceso(p), ruta) << "borrowed, not copied";
    }
    destruye(&lista);
    return texto;
}

// ---- A false system behind the table

struct modulo_fingido {
    const char* nombre;
    const char* ruta;
};
struct proceso_fingido {
    DWORD pid;
    std::vector<modulo_fingido> modulos;
    bool con_instantanea = true;
    bool se_deja_abrir = true;
};

class sistema_fingido {
public:
    explicit sistema_fingido(std::vector<proceso_fingido> lista)
        : antes_(sistema), procesos_(std::move(lista)) {
        i_yo() = this;
        sistema.CreateToolhelp32Snapshot = i_instantanea;
        sistema.Process32FirstW = i_proceso<true>;
        sistema.Process32NextW = i_proceso<false>;
        sistema.Module32FirstW = i_modulo<true>;
        sistema.Module32NextW = i_modulo<false>;
        sistema.OpenProcess = i_abre;
        sistema.TerminateProcess = i_termina;
        sistema.CloseHandle = i_cierra;
    }
    ~sistema_fingido() {
        sistema = antes_;
        EXPECT_TRUE(abiertas_.empty()) << "handles left open";
    }
    sistema_fingido(const sistema_fingido&) = delete;
    sistema_fingido& operator=(const sistema_fingido&) = delete;

    // Sizes that the system accepts, and the code of its refusal.
    std::vector<DWORD> tamanyos_proceso = {sizeof(PROCESSENTRY32W)};
    std::vector<DWORD> tamanyos_modulo = {sizeof(MODULEENTRY32W)};
    DWORD codigo_de_rechazo = ERROR_INSUFFICIENT_BUFFER;
    // From the second entry of a walk on, other sizes.
    std::vector<DWORD> tamanyos_siguientes;
    bool sin_lista_de_procesos = false;
    // How often a snapshot of modules fails before it succeeds, and with which code.
    unsigned instantaneas_que_fallan = 0;
    DWORD codigo_de_instantanea = ERROR_BAD_LENGTH;

    std::vector<std::string> llamadas;  // in order: "snapshot 2 0", "process 556", "module 1072", ...
    std::vector<DWORD> terminados;

private:
    struct manija_fingida {
        DWORD pid;  // 0: the list of processes
        std::size_t cual = 0;
    };
    static sistema_fingido*& i_yo() {
        static sistema_fingido* yo = nullptr;
        return yo;
    }
    static HANDLE i_nueva(DWORD pid) {
        auto* h = new manija_fingida{pid};
        i_yo()->abiertas_.insert(h);
        return h;
    }
    const proceso_fingido* i_busca(DWORD pid) const {
        for (const proceso_fingido& p : procesos_) {
            if (p.pid == pid) {
                return &p;
            }
        }
        return nullptr;
    }
    static BOOL i_falla(DWORD codigo) {
        ::SetLastError(codigo);
        return FALSE;
    }
    static bool i_acepta(const std::vector<DWORD>& tamanyos, bool primera, DWORD tamanyo) {
        const std::vector<DWORD>& valen =
            primera || i_yo()->tamanyos_siguientes.empty() ? tamanyos : i_yo()->tamanyos_siguientes;
        return std::find(valen.begin(), valen.end(), tamanyo) != valen.end();
    }
    static void i_copia(wchar_t* destino, const char* texto) {
        const texto_w ancho = w(texto);
        std::memcpy(destino, ancho.c_str(), (ancho.size() + 1) * sizeof(wchar_t));
    }

    static HANDLE WINAPI i_instantanea(DWORD que, DWORD pid) {
        i_yo()->llamadas.push_back("snapshot " + std::to_string(que) + " " + std::to_string(pid));
        if (que != TH32CS_SNAPPROCESS && i_yo()->instantaneas_que_fallan > 0) {
            --i_yo()->instantaneas_que_fallan;
            ::SetLastError(i_yo()->codigo_de_instantanea);
            return INVALID_HANDLE_VALUE;
        }
        const proceso_fingido* p = i_yo()->i_busca(pid);
        const bool hay =
            que == TH32CS_SNAPPROCESS ? !i_yo()->sin_lista_de_procesos : p != nullptr && p->con_instantanea;
        return hay ? i_nueva(que == TH32CS_SNAPPROCESS ? 0 : pid)
                   : (::SetLastError(ERROR_ACCESS_DENIED), INVALID_HANDLE_VALUE);
    }
    template <bool Primera>
    static BOOL WINAPI i_proceso(HANDLE h, PROCESSENTRY32W* entrada) {
        i_yo()->llamadas.push_back("process " + std::to_string(entrada->dwSize));
        if (!i_acepta(i_yo()->tamanyos_proceso, Primera, entrada->dwSize)) {
            return i_falla(i_yo()->codigo_de_rechazo);
        }
        auto* m = static_cast<manija_fingida*>(h);
        if (m->cual >= i_yo()->procesos_.size()) {
            return i_falla(ERROR_NO_MORE_FILES);
        }
        entrada->th32ProcessID = i_yo()->procesos_[m->cual++].pid;
        return TRUE;
    }
    template <bool Primera>
    static BOOL WINAPI i_modulo(HANDLE h, MODULEENTRY32W* entrada) {
        i_yo()->llamadas.push_back("module " + std::to_string(entrada->dwSize));
        if (!i_acepta(i_yo()->tamanyos_modulo, Primera, entrada->dwSize)) {
            return i_falla(i_yo()->codigo_de_rechazo);
        }
        auto* m = static_cast<manija_fingida*>(h);
        const std::vector<modulo_fingido>& modulos = i_yo()->i_busca(m->pid)->modulos;
        if (m->cual >= modulos.size()) {
            return i_falla(ERROR_NO_MORE_FILES);
        }
        const modulo_fingido& modulo = modulos[m->cual++];
        entrada->th32ProcessID = m->pid;
        i_copia(entrada->szModule, modulo.nombre);
        i_copia(entrada->szExePath, modulo.ruta);
        return TRUE;
    }
    static HANDLE WINAPI i_abre(DWORD acceso, BOOL heredable, DWORD pid) {
        EXPECT_EQ(acceso, static_cast<DWORD>(PROCESS_TERMINATE));
        EXPECT_FALSE(heredable);
        const proceso_fingido* p = i_yo()->i_busca(pid);
        return p != nullptr && p->se_deja_abrir ? i_nueva(pid) : nullptr;
    }
    static BOOL WINAPI i_termina(HANDLE h, UINT codigo) {
        EXPECT_EQ(codigo, 0u);
        i_yo()->terminados.push_back(static_cast<manija_fingida*>(h)->pid);
        return i_falla(ERROR_ACCESS_DENIED);  // its answer is of no interest
    }
    static BOOL WINAPI i_cierra(HANDLE h) {
        EXPECT_EQ(i_yo()->abiertas_.erase(static_cast<manija_fingida*>(h)), 1u) << "not open";
        delete static_cast<manija_fingida*>(h);
        return TRUE;
    }

    interno::tabla_sistema antes_;
    std::vector<proceso_fingido> procesos_;
    std::set<manija_fingida*> abiertas_;
};

const std::vector<proceso_fingido> unos_procesos = {
    {0, {{"idle.exe", "idle"}}},
    {4, {}, false},
    {100, {{"uno.exe", "C:\\uno.exe"}, {"ntdll.dll", "C:\\w\\ntdll.dll"}, {"comun.dll", "C:\\1\\comun.dll"}}},
    {200,
     {{"\u00F1\u6F22\U0001F600.exe", "C:\\\u00F1\u6F22\U0001F600.exe"}, {"ntdll.dll", "C:\\w\\ntdll.dll"}},
     true,
     false},
    {300, {{"dos.exe", "C:\\dos.exe"}, {"comun.dll", "C:\\3\\comun.dll"}, {"comun.dll", "D:\\3\\comun.dll"}}},
    {400, {}},
    {500, {{"uno.exe", "D:\\uno.exe"}, {"UNO.EXE", "D:\\UNO.EXE"}}},
    // A 32-bit program: its executable stands in the lists of both widths, each with its own spelling.
    {600,
     {{"wow.exe", "C:\\x86\\wow.exe"},
      {"ntdll.dll", "C:\\w\\ntdll.dll"},
      {"wow.exe", "C:\\X86\\Wow.exe"},
      {"ntdll.dll", "C:\\w\\wow\\ntdll.dll"},
      {"propia.dll", "C:\\x86\\propia.dll"},
      {"wow.exe", "C:\\x86\\wow.exe"}}},
    {700, {{"wow.exe", "C:\\x86\\wow.exe"}}},
};

}  // namespace

TEST(taskproc, se_encuentra_cada_modulo_de_ese_nombre_exacto) {
    const struct {
        const char* que;
        const char* modulo;
        const char* encontrados;
    } filas[] = {
        {"an executable, twice", "uno.exe", "100 uno.exe=C:\\uno.exe; 500 uno.exe=D:\\uno.exe"},
        {"the same name in capitals is another", "UNO.EXE", "500 UNO.EXE=D:\\UNO.EXE"},
        {"nor in a mixture", "Uno.exe", "(NULL)"},
        {"a library of several processes", "ntdll.dll",
         "100 ntdll.dll=C:\\w\\ntdll.dll; 200 ntdll.dll=C:\\w\\ntdll.dll; 600 ntdll.dll=C:\\w\\ntdll.dll; "
         "600 ntdll.dll=C:\\w\\wow\\ntdll.dll"},
        {"a path that a process lists three times, and another process once", "wow.exe",
         "600 wow.exe=C:\\x86\\wow.exe; 700 wow.exe=C:\\x86\\wow.exe"},
        {"a library of a 32-bit program", "propia.dll", "600 propia.dll=C:\\x86\\propia.dll"},
        {"twice in one process", "comun.dll",
         "100 comun.dll=C:\\1\\comun.dll; 300 comun.dll=C:\\3\\comun.dll; 300 comun.dll=D:\\3\\comun.dll"},
        {"in other alphabets", "\u00F1\u6F22\U0001F600.exe",
         "200 \u00F1\u6F22\U0001F600.exe=C:\\\u00F1\u6F22\U0001F600.exe"},
        {"without its extension", "uno", "(NULL)"},
        {"a beginning", "uno.ex", "(NULL)"},
        {"a continuation", "uno.exe ", "(NULL)"},
        {"a path", "C:\\uno.exe", "(NULL)"},
        {"empty", "", "(NULL)"},
        {"the idle process is not the one that asks", "idle.exe", "(NULL)"},
    };
    for (const auto& f : filas) {
        SCOPED_TRACE(f.que);
        sistema_fingido fingido(unos_procesos);
        EXPECT_EQ(encuentra(f.modulo), f.encontrados);
        const unsigned long long vivos = lumospy_bloques_vivos();
        EXPECT_EQ(taskproc_busca_proceso_abierto(w(f.modulo).c_str(), nullptr),
                  std::string(f.encontrados) == "(NULL)" ? 0 : 1);
        EXPECT_EQ(lumospy_bloques_vivos(), vivos);
    }
}

TEST(taskproc, un_nombre_larguisimo_no_es_el_de_nadie) {
    const std::string nombre = "uno.exe" + std::string(100'000, 'x');
    sistema_fingido fingido(unos_procesos);
    EXPECT_EQ(encuentra(nombre.c_str()), "(NULL)");
    EXPECT_EQ(taskproc_mata_procesos_nombre_dado(w(nombre).c_str()), 0);
}

TEST(taskproc, sin_lista_se_para_en_el_primero) {
    sistema_fingido fingido(unos_procesos);
    fingido.tamanyos_proceso = {556};
    fingido.tamanyos_modulo = {1072};
    EXPECT_EQ(taskproc_busca_proceso_abierto(L"ntdll.dll", nullptr), 1);
    EXPECT_EQ(fingido.llamadas,
              (std::vector<std::string>{"snapshot 2 0", "process 556",                    // idle
                                        "process 556", "snapshot 24 4",                   // refused
                                        "process 556", "snapshot 24 100", "module 1072",  // uno.exe
                                        "module 1072"}));  // found: nothing more
}

TEST(taskproc, con_lista_se_miran_todos_los_modulos_de_todos) {
    sistema_fingido fingido(
        {{100, {{"a.exe", "C:\\a.exe"}, {"b.dll", "C:\\b.dll"}}}, {200, {{"a.exe", "D:\\a.exe"}}}});
    fingido.tamanyos_proceso = {556};
    fingido.tamanyos_modulo = {1072};
    EXPECT_EQ(encuentra("a.exe"), "100 a.exe=C:\\a.exe; 200 a.exe=D:\\a.exe");
    EXPECT_EQ(fingido.llamadas,
              (std::vector<std::string>{"snapshot 2 0", "process 556", "snapshot 24 100", "module 1072",
                                        "module 1072", "module 1072", "process 556", "snapshot 24 200",
                                        "module 1072", "module 1072", "process 556"}));
}

TEST(taskproc, se_ofrecen_primero_los_tamanyos_de_siempre) {
    constexpr DWORD propio_p = sizeof(PROCESSENTRY32W);
    constexpr DWORD propio_m = sizeof(MODULEENTRY32W);
    const std::string p = "process " + std::to_string(propio_p);
    const std::string m = "module " + std::to_string(propio_m);
    const struct {
        const char* que;
        std::vector<DWORD> de_proceso;
        std::vector<DWORD> de_modulo;
        DWORD rechazo;
        bool encontrado;
        std::vector<std::string> llamadas;
    } filas[] = {
        {"the usual sizes are accepted: no other is offered",
         {556, propio_p},
         {1072, propio_m},
         ERROR_INSUFFICIENT_BUFFER,
         true,
         {"snapshot 2 0", "process 556", "snapshot 24 7", "module 1072", "module 1072", "process 556"}},
        {"refused: the same call again with the system's own size, once a search",
         {propio_p},
         {propio_m},
         ERROR_INSUFFICIENT_BUFFER,
         true,
         {"snapshot 2 0", "process 556", p, "snapshot 24 7", "module 1072", m, m, p}},
        {"refused with another code",
         {propio_p},
         {propio_m},
         ERROR_BAD_LENGTH,
         true,
         {"snapshot 2 0", "process 556", p, "snapshot 24 7", "module 1072", m, m, p}},
        {"only modules are refused",
         {556},
         {propio_m},
         ERROR_INSUFFICIENT_BUFFER,
         true,
         {"snapshot 2 0", "process 556", "snapshot 24 7", "module 1072", m, m, "process 556"}},
        {"every size of processes is refused",
         {},
         {1072},
         ERROR_INSUFFICIENT_BUFFER,
         false,
         {"snapshot 2 0", "process 556", p}},
        {"every size of modules is refused",
         {556},
         {},
         ERROR_INSUFFICIENT_BUFFER,
         false,
         {"snapshot 2 0", "process 556", "snapshot 24 7", "module 1072", m, "process 556"}},
    };
    for (const auto& f : filas) {
        SCOPED_TRACE(f.que);
        sistema_fingido fingido({{7, {{"a.exe", "C:\\a.exe"}}}});
        fingido.tamanyos_proceso = f.de_proceso;
        fingido.tamanyos_modulo = f.de_modulo;
        fingido.codigo_de_rechazo = f.rechazo;
        EXPECT_EQ(encuentra("a.exe"), f.encontrado ? "7 a.exe=C:\\a.exe" : "(NULL)");
        EXPECT_EQ(fingido.llamadas, f.llamadas);
    }
}

// Heaps would cost a thread in every process of the machine, threads the list of all of them each time: nobody reads
// either. Modules are asked for in both widths.
TEST(taskproc, de_los_demas_se_piden_solo_los_modulos) {
    sistema_fingido fingido(unos_procesos);
    encuentra("no such.dll");
    const std::string esperada = "snapshot " + std::to_string(TH32CS_SNAPMODULE | TH32CS_SNAPMODULE32) + " ";
    std::size_t de_modulos = 0;
    for (const std::string& llamada : fingido.llamadas) {
        if (llamada.rfind("snapshot ", 0) == 0 && llamada != "snapshot 2 0") {
            EXPECT_EQ(llamada.rfind(esperada, 0), 0u) << llamada;
            EXPECT_NE(llamada, esperada + "0") << "process 0 would be this one";
            ++de_modulos;
        }
    }
    EXPECT_EQ(de_modulos, unos_procesos.size() - 1);
}

// A first process without modules must not teach the search a wrong size.
TEST(taskproc, un_proceso_vacio_no_cambia_el_tamanyo) {
    sistema_fingido fingido({{7, {}}, {8, {{"a.exe", "C:\\a.exe"}}}});
    fingido.tamanyos_proceso = {556};
    fingido.tamanyos_modulo = {1072};
    EXPECT_EQ(encuentra("a.exe"), "8 a.exe=C:\\a.exe");
}

TEST(taskproc, un_tamanyo_rechazado_a_medio_paseo_se_cambia) {
    sistema_fingido fingido(
        {{7, {{"x.dll", "C:\\x.dll"}, {"a.exe", "C:\\a.exe"}}}, {8, {{"a.exe", "D:\\a.exe"}}}});
    fingido.tamanyos_proceso = {556, sizeof(PROCESSENTRY32W)};
    fingido.tamanyos_modulo = {1072, sizeof(MODULEENTRY32W)};
    fingido.tamanyos_siguientes = {sizeof(PROCESSENTRY32W), sizeof(MODULEENTRY32W)};
    EXPECT_EQ(encuentra("a.exe"), "7 a.exe=C:\\a.exe; 8 a.exe=D:\\a.exe");
}

// A process that loads a library in that moment is no reason not to see it.
TEST(taskproc, una_instantanea_que_no_cabe_se_toma_otra_vez) {
    const struct {
        unsigned fallan;
        DWORD codigo;
        bool encontrado;
        unsigned tomadas;
    } filas[] = {
        {.fallan = 0, .codigo = ERROR_BAD_LENGTH, .encontrado = true, .tomadas = 1},
        {.fallan = 1, .codigo = ERROR_BAD_LENGTH, .encontrado = true, .tomadas = 2},
        {.fallan = 9, .codigo = ERROR_BAD_LENGTH, .encontrado = true, .tomadas = 10},
        {.fallan = 10, .codigo = ERROR_BAD_LENGTH, .encontrado = false, .tomadas = 10},
        {.fallan = 1, .codigo = ERROR_ACCESS_DENIED, .encontrado = false, .tomadas = 1},
        {.fallan = 1, .codigo = ERROR_PARTIAL_COPY, .encontrado = false, .tomadas = 1},
    };
    for (const auto& f : filas) {
        SCOPED_TRACE(testing::Message() << f.fallan << " of code " << f.codigo);
        sistema_fingido fingido({{7, {{"a.exe", "C:\\a.exe"}}}});
        fingido.instantaneas_que_fallan = f.fallan;
        fingido.codigo_de_instantanea = f.codigo;
        EXPECT_EQ(encuentra("a.exe"), f.encontrado ? "7 a.exe=C:\\a.exe" : "(NULL)");
        EXPECT_EQ(std::count(fingido.llamadas.begin(), fingido.llamadas.end(), "snapshot 24 7"), f.tomadas);
    }
}

TEST(taskproc, sin_lista_de_procesos_se_informa) {
    sistema_fingido fingido(unos_procesos);
    fingido.sin_lista_de_procesos = true;
    EXPECT_EQ(encuentra("uno.exe"), "(NULL)");
    EXPECT_EQ(taskproc_busca_proceso_abierto(L"uno.exe", nullptr), 0);
    EXPECT_EQ(taskproc_mata_procesos_nombre_dado(L"uno.exe"), 0);
    const std::vector<informe> informes = toma_informes();
    ASSERT_EQ(informes.size(), 3u);
    for (const informe& i : informes) {
        EXPECT_EQ(i.expresion, "hSnapshot != INVALID_HANDLE_VALUE");
        EXPECT_EQ(i.etiqueta, "taskproc (LUMODIR.DLL)");
    }
    EXPECT_TRUE(fingido.terminados.empty());
}

TEST(taskproc, un_sistema_sin_procesos_no_encuentra_nada) {
    sistema_fingido fingido({});
    EXPECT_EQ(encuentra("uno.exe"), "(NULL)");
    EXPECT_EQ(taskproc_busca_proceso_abierto(L"uno.exe", nullptr), 0);
}

TEST(taskproc, se_terminan_los_encontrados_en_su_orden) {
    const struct {
        const char* modulo;
        unsigned short resultado;
        std::vector<DWORD> terminados;
    } filas[] = {
        {"uno.exe", 1, {100, 500}},
        {"UNO.EXE", 1, {500}},
        {"wow.exe", 1, {600, 700}},
        {"ntdll.dll", 1, {100, 600, 600}},  // 200 does not let itself be opened: left alone, silently
        {"comun.dll", 1, {100, 300, 300}},
        {"\u00F1\u6F22\U0001F600.exe", 1, {}},
        {"Uno.exe", 0, {}},
        {"", 0, {}},
    };
    for (const auto& f : filas) {
        SCOPED_TRACE(f.modulo);
        sistema_fingido fingido(unos_procesos);
        EXPECT_EQ(taskproc_mata_procesos_nombre_dado(w(f.modulo).c_str()), f.resultado);
        EXPECT_EQ(fingido.terminados, f.terminados);
    }
}

TEST(taskproc, se_termina_el_proceso_de_un_registro) {
    sistema_fingido fingido(unos_procesos);
    wchar_t nada[] = L"";
    for (const DWORD pid : {DWORD{300}, DWORD{200}, DWORD{999}}) {
        const Taskproc registro = {nada, pid, nada};
        EXPECT_EQ(taskproc_mata_proceso(&registro), pid == 300 ? 1 : 0) << pid;
    }
    EXPECT_EQ(fingido.terminados, std::vector<DWORD>{300});
}

TEST(taskproc, NULL_se_informa_y_no_se_toca_nada) {
    sistema_fingido fingido(unos_procesos);
    auto* lista = reinterpret_cast<ArrPunteroConTipo*>(0x77);
    EXPECT_EQ(taskproc_busca_proceso_abierto(nullptr, &lista), 0);
    EXPECT_EQ(lista, nullptr);
    EXPECT_EQ(taskproc_busca_proceso_abierto(nullptr, nullptr), 0);
    EXPECT_EQ(taskproc_mata_procesos_nombre_dado(nullptr), 0);
    ESPERA_INFORMES("(modulo) != NULL", "(modulo) != NULL", "(modulo) != NULL");
    EXPECT_EQ(taskproc_mata_proceso(nullptr), 0);
    EXPECT_EQ(taskproc_ruta_proceso(nullptr), nullptr);
    taskproc_destruye(nullptr);
    Taskproc* ninguno = nullptr;
    taskproc_destruye(&ninguno);
    EXPECT_FALSE(i_crea_taskproc(nullptr));
    const std::vector<informe> informes = toma_informes();
    ASSERT_EQ(informes.size(), 5u);
    const char* const esperados[] = {"(taskproc) != NULL", "(taskproc) != NULL", "(taskproc) != NULL",
                                     "(*taskproc) != NULL", "(pModuleEntry) != NULL"};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(informes[i].expresion, esperados[i]);
        EXPECT_EQ(informes[i].etiqueta, "taskproc (LUMODIR.DLL)");
    }
    EXPECT_TRUE(fingido.llamadas.empty());
}

TEST(taskproc, un_registro_se_copia_y_se_destruye) {
    MODULEENTRY32W entrada = {};
    entrada.th32ProcessID = 0xFFFFFFF0;
    entrada.th32ModuleID = 1;
    texto_w(w("m\u00F3dulo.dll")).copy(entrada.szModule, 32);
    texto_w(w("C:\\m\u00F3dulo.dll")).copy(entrada.szExePath, 32);
    Taskproc* registro = i_crea_taskproc(&entrada).suelta();
    entrada.szModule[0] = entrada.szExePath[0] = L'#';
    EXPECT_EQ(u8(registro->modulo), "m\u00F3dulo.dll");
    EXPECT_EQ(u8(taskproc_ruta_proceso(registro)), "C:\\m\u00F3dulo.dll");
    EXPECT_EQ(registro->pid, 0xFFFFFFF0u);
    taskproc_destruye(&registro);
    EXPECT_EQ(registro, nullptr);
}

// ---- Real processes

namespace {

const papel espera_ser_hallado("espera_ser_hallado", [] {
    // A library that a console program does not have by itself, if one is asked for.
    const texto_w biblioteca = hijo_dato();
    if (!biblioteca.empty() && ::LoadLibraryW(biblioteca.c_str()) == nullptr) {
        return 1;
    }
    hijo_listo();
    hijo_espera_fin();
    return 5;
});

// A name that no other process of the machine has, other runs of this test included.
std::string nombre_propio(const char* que) {
    return std::string(que) + "_" + std::to_string(::GetCurrentProcessId()) + "_\u00F1.exe";
}

texto_w copia_del_ejecutable(const directorio_temporal& dir, const std::string& nombre) {
    const texto_w copia = dir.ruta_w(nombre);
    EXPECT_TRUE(::CopyFileW(ruta_del_ejecutable().c_str(), copia.c_str(), TRUE)) << ::GetLastError();
    return copia;
}

std::vector<DWORD> pids_de(const std::string& modulo) {
    std::vector<DWORD> pids;
    ArrPunteroConTipo* lista = nullptr;
    if (taskproc_busca_proceso_abierto(w(modulo).c_str(), &lista) == 1) {
        for (unsigned long i = 0; i < arr_NumElemsPuntero(lista); ++i) {
            pids.push_back(static_cast<const Taskproc*>(arr_GetPunteroConTipo(lista, i))->pid);
        }
        destruye(&lista);
    }
    std::sort(pids.begin(), pids.end());
    return pids;
}

std::vector<DWORD> ordenados(std::vector<DWORD> pids) {
    std::sort(pids.begin(), pids.end());
    return pids;
}

}  // namespace

TEST(taskproc, este_proceso_se_encuentra_a_si_mismo_una_vez) {
    const std::string ruta = u8(ruta_del_ejecutable());
    const std::string nombre = ruta.substr(ruta.rfind('\\') + 1);
    const std::string esperado = std::to_string(::GetCurrentProcessId()) + " " + nombre + "=" + ruta;
    const std::string encontrados = encuentra(nombre.c_str());
    const std::size_t donde = encontrados.find(esperado);
    EXPECT_NE(donde, std::string::npos) << encontrados;
    EXPECT_EQ(encontrados.find(esperado, donde + 1), std::string::npos) << encontrados;
    EXPECT_EQ(taskproc_busca_proceso_abierto(w(nombre).c_str(), nullptr), 1);
    EXPECT_EQ(taskproc_busca_proceso_abierto(w("no_" + nombre).c_str(), nullptr), 0);
}

TEST(taskproc, un_hijo_se_encuentra_por_su_ejecutable_y_se_termina) {
    const directorio_temporal dir;
    const std::string nombre = nombre_propio("Uno");
    const texto_w copia = copia_del_ejecutable(dir, nombre);
    EXPECT_EQ(encuentra(nombre.c_str()), "(NULL)");
    const proceso_hijo hijo("espera_ser_hallado", {}, copia);
    ASSERT_TRUE(hijo.espera_listo());

    EXPECT_EQ(encuentra(nombre.c_str()), std::to_string(hijo.pid()) + " " + nombre + "=" + u8(copia));
    EXPECT_EQ(encuentra(nombre_propio("uno").c_str()), "(NULL)") << "letter case counts";
    EXPECT_EQ(encuentra(nombre_propio("UNO").c_str()), "(NULL)");
    EXPECT_EQ(taskproc_mata_procesos_nombre_dado(w(nombre_propio("uno")).c_str()), 0);
    EXPECT_TRUE(hijo.vive());

    ArrPunteroConTipo* lista = nullptr;
    ASSERT_EQ(taskproc_busca_proceso_abierto(w(nombre).c_str(), &lista), 1);
    EXPECT_EQ(taskproc_mata_proceso(static_cast<const Taskproc*>(arr_GetPunteroConTipo(lista, 0))), 1);
    EXPECT_EQ(hijo.espera_fin(), 0u) << "ended by the library: by itself it answers 5";
    EXPECT_EQ(encuentra(nombre.c_str()), "(NULL)");
    destruye(&lista);
}

TEST(taskproc, varios_hijos_se_terminan_a_la_vez_y_los_demas_siguen) {
    const directorio_temporal dir;
    const std::string nombre = nombre_propio("varios");
    const texto_w copia = copia_del_ejecutable(dir, nombre);
    const texto_w otro_nombre = copia_del_ejecutable(dir, nombre_propio("otro"));
    const proceso_hijo a("espera_ser_hallado", {}, copia);
    const proceso_hijo b("espera_ser_hallado", {}, copia);
    const proceso_hijo c("espera_ser_hallado", {}, copia);
    const proceso_hijo otro("espera_ser_hallado", {}, otro_nombre);
    ASSERT_TRUE(a.espera_listo() && b.espera_listo() && c.espera_listo() && otro.espera_listo());

    EXPECT_EQ(pids_de(nombre), ordenados({a.pid(), b.pid(), c.pid()}));
    EXPECT_EQ(taskproc_busca_proceso_abierto(w(nombre).c_str(), nullptr), 1);
    EXPECT_EQ(taskproc_mata_procesos_nombre_dado(w(nombre).c_str()), 1);
    for (const proceso_hijo* hijo : {&a, &b, &c}) {
        EXPECT_EQ(hijo->espera_fin(), 0u);
    }
    EXPECT_TRUE(otro.vive());
    EXPECT_EQ(pids_de(nombre_propio("otro")), std::vector<DWORD>{otro.pid()});
    EXPECT_EQ(taskproc_mata_procesos_nombre_dado(w(nombre).c_str()), 0) << "there is none left";
    otro.suelta();
    EXPECT_EQ(otro.espera_fin(), 5u);
}

TEST(taskproc, una_biblioteca_encuentra_a_todos_los_que_la_han_cargado) {
    const directorio_temporal dir;
    // A copy of a system library under a name of the test's own.
    const std::string biblioteca = "lumo_" + std::to_string(::GetCurrentProcessId()) + "_b.dll";
    wchar_t del_sistema[MAX_PATH];
    ::GetSystemDirectoryW(del_sistema, MAX_PATH);
    const texto_w copia_dll = dir.ruta_w(biblioteca);
    ASSERT_TRUE(::CopyFileW((texto_w(del_sistema) + w("\\version.dll")).c_str(), copia_dll.c_str(), TRUE));
    const texto_w copia = copia_del_ejecutable(dir, nombre_propio("con"));
    const texto_w otra = copia_del_ejecutable(dir, nombre_propio("sin"));
    const proceso_hijo a("espera_ser_hallado", copia_dll, copia);
    const proceso_hijo b("espera_ser_hallado", copia_dll, copia);
    const proceso_hijo sin("espera_ser_hallado", {}, otra);
    ASSERT_TRUE(a.espera_listo() && b.espera_listo() && sin.espera_listo());

    EXPECT_EQ(pids_de(biblioteca), ordenados({a.pid(), b.pid()}));
    EXPECT_EQ(taskproc_mata_procesos_nombre_dado(w(biblioteca).c_str()), 1);
    EXPECT_EQ(a.espera_fin(), 0u);
    EXPECT_EQ(b.espera_fin(), 0u);
    EXPECT_TRUE(sin.vive());
    EXPECT_EQ(taskproc_busca_proceso_abierto(w(biblioteca).c_str(), nullptr), 0);
}

// Every process has it, this one and its children included.
TEST(taskproc, la_biblioteca_de_todos_los_procesos) {
    const directorio_temporal dir;
    const proceso_hijo hijo("espera_ser_hallado", {}, copia_del_ejecutable(dir, nombre_propio("todos")));
    ASSERT_TRUE(hijo.espera_listo());
    const std::vector<DWORD> pids = pids_de("ntdll.dll");
    EXPECT_EQ(std::count(pids.begin(), pids.end(), ::GetCurrentProcessId()), 1);
    EXPECT_EQ(std::count(pids.begin(), pids.end(), hijo.pid()), 1);
}
