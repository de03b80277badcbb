// Who holds a file: the system's Restart Manager is replaced, because Wine's names nobody.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../../apps/lumodir/ocupantes.cpp"

namespace {

struct sistema_fingido {
    std::vector<mando::ocupante> ocupantes;
    unsigned long al_empezar = ERROR_SUCCESS, al_registrar = ERROR_SUCCESS, al_listar = ERROR_SUCCESS;
    int llegan_mas = 0;  // how many times one more has come when the list is asked for
    int abiertas = 0;
    std::wstring registrada;
};
sistema_fingido fingido;

unsigned long WINAPI i_empieza(unsigned long* sesion, unsigned long, wchar_t*) {
    *sesion = 7;
    fingido.abiertas += fingido.al_empezar == ERROR_SUCCESS ? 1 : 0;
    return fingido.al_empezar;
}

unsigned long WINAPI i_registra(unsigned long sesion, unsigned ficheros, const wchar_t** rutas, unsigned,
                                RM_UNIQUE_PROCESS*, unsigned, const wchar_t**) {
    EXPECT_EQ(sesion, 7u);
    EXPECT_EQ(ficheros, 1u);
    fingido.registrada = rutas[0];
    return fingido.al_registrar;
}

unsigned long WINAPI i_lista(unsigned long, unsigned* hacen_falta, unsigned* caben, RM_PROCESS_INFO* lista,
                             unsigned long* motivos) {
    if (fingido.al_listar != ERROR_SUCCESS) {
        return fingido.al_listar;
    }
    if (fingido.llegan_mas > 0) {
        --fingido.llegan_mas;
        fingido.ocupantes.push_back({99, L"otro.exe"});
    }
    const auto todos = static_cast<unsigned>(fingido.ocupantes.size());
    *motivos = 0;
    *hacen_falta = todos;
    if (*caben < todos) {
        return ERROR_MORE_DATA;
    }
    for (unsigned i = 0; i < todos; ++i) {
        lista[i].Process.dwProcessId = fingido.ocupantes[i].pid;
        fingido.ocupantes[i].nombre.copy(lista[i].strAppName, CCH_RM_MAX_APP_NAME);
    }
    *caben = todos;
    return ERROR_SUCCESS;
}

unsigned long WINAPI i_termina(unsigned long) {
    --fingido.abiertas;
    return ERROR_SUCCESS;
}

class ocupantes : public testing::Test {
protected:
    void SetUp() override {
        fingido = {};
        mando::puerta_ocupantes = {i_empieza, i_registra, i_lista, i_termina};
    }
    void TearDown() override {
        EXPECT_EQ(fingido.abiertas, 0) << "a session stays open";
        mando::puerta_ocupantes = {};
    }
    static std::string i_quienes() {
        std::string todos;
        for (const mando::ocupante& o : mando::quien_tiene(L"C:\\informe ñ.txt")) {
            todos += std::string(o.nombre.begin(), o.nombre.end()) + ":" + std::to_string(o.pid) + " ";
        }
        return todos;
    }
};

}  // namespace

TEST_F(ocupantes, se_nombran_los_programas_y_no_este) {
    fingido.ocupantes = {
        {1234, L"notepad.exe"}, {GetCurrentProcessId(), L"lumodir.exe"}, {77, L"backup.exe"}};
    EXPECT_EQ(i_quienes(), "notepad.exe:1234 backup.exe:77 ");
    EXPECT_EQ(fingido.registrada, L"C:\\informe ñ.txt");
}

TEST_F(ocupantes, llegan_otros_mientras_se_pregunta) {
    fingido.ocupantes = {{1, L"a.exe"}};
    fingido.llegan_mas = 3;
    EXPECT_EQ(i_quienes(), "a.exe:1 otro.exe:99 otro.exe:99 otro.exe:99 ");
    fingido.llegan_mas = 1000;  // it gives up
    EXPECT_EQ(i_quienes(), "");
}

TEST_F(ocupantes, donde_el_sistema_no_dice_nada_no_se_nombra_a_nadie) {
    EXPECT_EQ(i_quienes(), "");
    fingido.ocupantes = {{1, L"a.exe"}};
    fingido.al_listar = ERROR_ACCESS_DENIED;
    EXPECT_EQ(i_quienes(), "");
    fingido.al_listar = ERROR_SUCCESS;
    fingido.al_registrar = ERROR_ACCESS_DENIED;
    EXPECT_EQ(i_quienes(), "");
    fingido.al_registrar = ERROR_SUCCESS;
    fingido.al_empezar = ERROR_TOO_MANY_OPEN_FILES;
    EXPECT_EQ(i_quienes(), "");
    fingido.al_empezar = ERROR_SUCCESS;
    mando::puerta_ocupantes.lista = nullptr;  // a system without it
    EXPECT_EQ(i_quienes(), "");
}
