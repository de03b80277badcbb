// What Windows does and Wine does not, to the search for processes: behind the imitation of Windows.
#include "apoyo/como_windows.hpp"
#include "apoyo/directorio.hpp"
#include "apoyo/hijo.hpp"
#include "companions/arr.h"
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
