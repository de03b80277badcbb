#include "apoyo/apoyo.hpp"

#include "apoyo/memoria_guardada.hpp"

#include "companions/buclrein.h"
#include "companions/buclrein.hpp"
#include "companions/error_interno.h"
#include "companions/lmaviso.h"
#include "companions/lumospy.h"
#include "companions/lumospy.hpp"
#include "companions/msglocal.h"
#include "companions/plataforma.hpp"
#include "companions/registro_mensaje.hpp"
#include "frame/avisos.hpp"

namespace apoyo {
namespace {

std::vector<informe> g_informes;
std::vector<std::string> g_avisos;
std::vector<pregunta> g_preguntas;
std::vector<unsigned long> g_esperas;
std::function<unsigned short(const pregunta&)> g_respuesta;
std::function<void(unsigned long)> g_al_dormir;

void recibe_informe(const char* expresion, const char* etiqueta, unsigned long linea, const wchar_t* detalle,
                    void*) {
    g_informes.push_back({expresion, etiqueta, linea, u8(detalle)});
}

void recibe_aviso(const wchar_t* texto, void*) {
    g_avisos.push_back(u8(texto));
}

unsigned short recibe_pregunta(const wchar_t* mensaje, unsigned long codigo, void*) {
    g_preguntas.push_back({u8(mensaje), codigo});
    return g_respuesta ? g_respuesta(g_preguntas.back()) : 0;
}

void duerme(unsigned long milisegundos) {
    g_esperas.push_back(milisegundos);
    if (g_al_dormir) {
        g_al_dormir(milisegundos);
    }
}

template <class T>
std::vector<T> vacia(std::vector<T>& lista) {
    std::vector<T> antes;
    antes.swap(lista);
    return antes;
}

class alrededor_de_cada_prueba : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        g_respuesta = nullptr;
        g_al_dormir = nullptr;
        olvida_todo();
        interno::i_restablece_modo_servicio();
        interno::plataforma::duerme_ms = duerme;
        error_interno_establece_receptor(recibe_informe, nullptr);
        lmaviso_establece_receptor(recibe_aviso, nullptr);
        buclrein_establece_receptor(recibe_pregunta, nullptr);
        buclrein_establece_politica(5, 100);
        msglocal_establece_idioma(interno::ranura_ingles);
        vivos_ = lumospy_bloques_vivos();
        internos_ = interno::i_bloques_internos_vivos();
        faltas_ = faltas_de_memoria();
    }
    void OnTestEnd(const testing::TestInfo& prueba) override {
        EXPECT_EQ(lumospy_bloques_vivos(), vivos_) << prueba.name() << " leaks blocks";
        EXPECT_EQ(interno::i_bloques_internos_vivos(), internos_) << prueba.name() << " leaks inner blocks";
        EXPECT_EQ(faltas_de_memoria(), faltas_) << prueba.name() << " touches memory that is not its own";
        for (const informe& i : toma_informes()) {
            ADD_FAILURE() << "report not expected: " << i.expresion << " [" << i.detalle << "]";
        }
        for (const std::string& aviso : toma_avisos()) {
            ADD_FAILURE() << "warning not expected: " << aviso;
        }
        for (const pregunta& p : toma_preguntas()) {
            ADD_FAILURE() << "question not expected: " << p.mensaje;
        }
    }
    unsigned long long vivos_ = 0;
    unsigned long long internos_ = 0;
    unsigned long faltas_ = 0;
};

}  // namespace

testing::TestEventListener* crea_alrededor() {
    return new alrededor_de_cada_prueba;
}

std::vector<informe> toma_informes() {
    return vacia(g_informes);
}

informe toma_el_informe() {
    const std::vector<informe> informes = toma_informes();
    EXPECT_EQ(informes.size(), 1u);
    return informes.empty() ? informe{} : informes.front();
}

std::vector<std::string> toma_expresiones() {
    std::vector<std::string> expresiones;
    for (const informe& i : toma_informes()) {
        expresiones.push_back(i.expresion);
    }
    return expresiones;
}

std::vector<std::string> toma_avisos() {
    return vacia(g_avisos);
}

std::vector<pregunta> toma_preguntas() {
    return vacia(g_preguntas);
}

std::vector<unsigned long> toma_esperas() {
    return vacia(g_esperas);
}

void olvida_todo() {
    toma_informes();
    toma_avisos();
    toma_preguntas();
    toma_esperas();
}

void contesta(std::function<unsigned short(const pregunta&)> respuesta) {
    g_respuesta = std::move(respuesta);
}

void al_dormir(std::function<void(unsigned long)> accion) {
    g_al_dormir = std::move(accion);
}

}  // namespace apoyo
