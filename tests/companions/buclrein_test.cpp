// The retry loop: scenarios told as the sequence of what happens, and every combination against a slow model.
//
// In a sequence, I is an attempt, E100 a wait of 100 ms, P a question, A a warning; the attempt after which the
// loop says that it is at its first retry before any warning bears an asterisk.
#include "companions/buclrein.hpp"

#include <algorithm>
#include <optional>
#include <stdexcept>

#include "apoyo/apoyo.hpp"
#include "companions/buclrein.h"
#include "companions/lmaviso.h"
#include "companions/msglocal.hpp"
#include "companions/plataforma.hpp"

using namespace apoyo;
using namespace interno;

namespace {

struct escenario {
    const char* nombre = "";
    bool reintentar = true;
    bool informar = true;
    bool servicio = false;
    unsigned long silenciosos = 5;
    unsigned long espera_ms = 100;
    int bien_en = 0;                              // number of the attempt that succeeds; 0 for none
    std::vector<unsigned short> respuestas = {};  // to the questions; 0 after the last
    const char* sucesos = "";
    bool resultado = false;
};

struct transcurso {
    std::string sucesos;
    bool resultado;
};

transcurso corre(const escenario& e) {
    std::string sucesos;
    buclrein_establece_politica(e.silenciosos, e.espera_ms);
    if (e.servicio) {
        buclrein_establece_modo_servicio_sin_reintentos();
    } else {
        i_restablece_modo_servicio();
    }
    al_dormir([&](unsigned long ms) { sucesos += " E" + std::to_string(ms); });
    std::size_t preguntas = 0;
    contesta([&](const pregunta&) -> unsigned short {
        sucesos += " P";
        return preguntas < e.respuestas.size() ? e.respuestas[preguntas++] : 0;
    });
    int intentos = 0;
    const bool resultado = i_con_reintentos(
        e.reintentar, e.informar,
        [&] {
            sucesos += sucesos.empty() ? "I" : " I";
            return ++intentos == e.bien_en;
        },
        [&](BuclRein& bucle) {
            buclrein_set_mensaje_reintentar(
                bucle, [&] { return cadena_w(vista_w(L"mensaje")); }, 0);
            if (buclrein_es_el_primer_reintento_antes_de_mostrar_aviso(bucle)) {
                sucesos += "*";
            }
        });
    i_restablece_modo_servicio();
    toma_preguntas();
    toma_esperas();
    return {sucesos, resultado};
}

const escenario escenarios[] = {
    {.nombre = "success at once", .bien_en = 1, .sucesos = "I", .resultado = true},
    {.nombre = "the third attempt succeeds", .bien_en = 3, .sucesos = "I* E100 I E100 I", .resultado = true},
    {.nombre = "gives up after the default policy", .sucesos = "I* E100 I E100 I E100 I E100 I E100 I P"},
    {.nombre = "the user grants one attempt, and is asked again",
     .silenciosos = 1,
     .respuestas = {1, 0},
     .sucesos = "I* E100 I P I P"},
    {.nombre = "a granted attempt succeeds",
     .silenciosos = 1,
     .bien_en = 4,
     .respuestas = {1, 1},
     .sucesos = "I* E100 I P I P I",
     .resultado = true},
    {.nombre = "any answer but 1 gives up", .silenciosos = 0, .respuestas = {2}, .sucesos = "I* P"},
    {.nombre = "no silent retries: asked at once",
     .silenciosos = 0,
     .respuestas = {1},
     .sucesos = "I* P I P"},
    {.nombre = "without report it is over after the silent retries",
     .informar = false,
     .silenciosos = 2,
     .sucesos = "I* E100 I E100 I"},
    {.nombre = "without report and without silent retries: not going to retry",
     .informar = false,
     .silenciosos = 0,
     .sucesos = "I"},
    {.nombre = "retry 0", .reintentar = false, .sucesos = "I"},
    {.nombre = "retry 0 and report 0", .reintentar = false, .informar = false, .sucesos = "I"},
    {.nombre = "retry 0 that succeeds", .reintentar = false, .bien_en = 1, .sucesos = "I", .resultado = true},
    {.nombre = "service mode", .servicio = true, .sucesos = "I"},
    {.nombre = "service mode without report", .informar = false, .servicio = true, .sucesos = "I"},
    {.nombre = "another wait", .informar = false, .silenciosos = 1, .espera_ms = 7, .sucesos = "I* E7 I"},
};

// The rules read one by one, without a state machine.
std::string sucesos_de(const escenario& e) {
    std::string sucesos;
    unsigned long silenciosos = e.silenciosos;
    std::size_t preguntas = 0;
    const bool insiste = e.reintentar && !e.servicio;
    for (int intento = 1;; ++intento) {
        sucesos += sucesos.empty() ? "I" : " I";
        if (intento == e.bien_en) {
            return sucesos;
        }
        if (!insiste) {
            return sucesos;
        }
        if (intento == 1 && (silenciosos > 0 || e.informar)) {
            sucesos += "*";
        }
        if (silenciosos > 0) {
            --silenciosos;
            sucesos += " E" + std::to_string(e.espera_ms);
        } else if (e.informar) {
            sucesos += " P";
            const bool si = preguntas < e.respuestas.size() && e.respuestas[preguntas] == 1;
            ++preguntas;
            if (!si) {
                return sucesos;
            }
        } else {
            return sucesos;
        }
    }
}

// What a process begins with: looked at before the first test sets a policy of its own.
struct principio {
    unsigned long silenciosos = 0;
    std::vector<unsigned long> esperas;
    bool en_servicio = true;
};
std::optional<principio> g_principio;

class mira_el_principio : public testing::Environment {
    void SetUp() override {
        if (g_principio) {
            return;
        }
        g_principio.emplace();
        const sustituye<void (*)(unsigned long)> sin_esperar(
            plataforma::duerme_ms, [](unsigned long ms) { g_principio->esperas.push_back(ms); });
        BuclRein bucle = buclrein_crea(true, false);
        g_principio->silenciosos = bucle.quedan;
        g_principio->en_servicio = i_modo_servicio();
        buclrein_reintentar(bucle, false);
    }
};
const testing::Environment* const g_mira_el_principio =
    testing::AddGlobalTestEnvironment(new mira_el_principio);

}  // namespace

TEST(buclrein, un_proceso_empieza_con_cinco_reintentos_de_100_ms_y_sin_servicio) {
    ASSERT_TRUE(g_principio.has_value());
    EXPECT_EQ(g_principio->silenciosos, 5u);
    EXPECT_EQ(g_principio->esperas, std::vector<unsigned long>{100});
    EXPECT_FALSE(g_principio->en_servicio);
}

TEST(buclrein, escenarios_por_filas) {
    for (const escenario& e : escenarios) {
        const transcurso t = corre(e);
        EXPECT_EQ(t.sucesos, e.sucesos) << e.nombre;
        EXPECT_EQ(t.resultado, e.resultado) << e.nombre;
    }
}

TEST(buclrein, toda_combinacion_como_el_modelo) {
    const std::vector<std::vector<unsigned short>> respuestas = {{},     {1},       {0, 1},
                                                                 {1, 1}, {1, 2, 1}, {1, 1, 1}};
    for (unsigned bits = 0; bits < 8; ++bits) {
        for (unsigned long silenciosos = 0; silenciosos < 4; ++silenciosos) {
            for (int bien_en = 0; bien_en < 8; ++bien_en) {
                for (const auto& r : respuestas) {
                    escenario e;
                    e.reintentar = (bits & 1) != 0;
                    e.informar = (bits & 2) != 0;
                    e.servicio = (bits & 4) != 0;
                    e.silenciosos = silenciosos;
                    e.bien_en = bien_en;
                    e.respuestas = r;
                    const transcurso t = corre(e);
                    ASSERT_EQ(t.sucesos, sucesos_de(e)) << bits << " " << silenciosos << " " << bien_en;
                }
            }
        }
    }
}

TEST(buclrein, la_pregunta_lleva_el_ultimo_mensaje_y_su_codigo) {
    struct fila {
        unsigned long codigo;
        bool con_texto_del_sistema;
    };
    for (const fila& f : {fila{0, false}, fila{5, true}, fila{32, true}}) {
        buclrein_establece_politica(0, 0);
        contesta([](const pregunta& p) -> unsigned short { return p.mensaje.substr(0, 9) == "intento 1"; });
        int intento = 0;
        i_con_reintentos(
            true, true, [] { return false; },
            [&](BuclRein& bucle) {
                const texto_w mensaje = w("intento " + std::to_string(++intento) + " ñ%s");
                buclrein_set_mensaje_reintentar(
                    bucle, [&] { return cadena_w(vista_w(mensaje)); }, f.codigo);
            });
        const std::vector<pregunta> preguntas = toma_preguntas();
        ASSERT_EQ(preguntas.size(), 2u) << f.codigo;
        const std::string del_sistema =
            f.con_texto_del_sistema ? "\n" + u8(strgetlasterror_texto_cod_error(f.codigo).c_str()) : "";
        EXPECT_EQ(preguntas[0].mensaje, "intento 1 ñ%s" + del_sistema);
        EXPECT_EQ(preguntas[1].mensaje, "intento 2 ñ%s" + del_sistema);
        EXPECT_EQ(preguntas[1].codigo, f.codigo);
    }
}

TEST(buclrein, sin_receptor_se_avisa_y_se_deja) {
    buclrein_establece_receptor(nullptr, nullptr);
    buclrein_establece_politica(1, 10);
    int intentos = 0;
    const bool bien = i_con_reintentos(
        true, true,
        [&] {
            ++intentos;
            return false;
        },
        [](BuclRein& bucle) {
            buclrein_set_mensaje_reintentar(
                bucle, [] { return cadena_w(vista_w(L"no se puede")); }, 0);
        });
    EXPECT_FALSE(bien);
    EXPECT_EQ(intentos, 2);
    ESPERA_AVISOS("no se puede");
    toma_esperas();
}

TEST(buclrein, el_contexto_llega_y_un_receptor_que_lanza_deja_de_reintentar) {
    static void* recibido;
    recibido = nullptr;
    int mio = 0;
    buclrein_establece_receptor(
        [](const wchar_t*, unsigned long, void* contexto) -> unsigned short {
            recibido = contexto;
            throw std::runtime_error("no");
        },
        &mio);
    buclrein_establece_politica(0, 0);
    int intentos = 0;
    i_con_reintentos(
        true, true,
        [&] {
            ++intentos;
            return false;
        },
        [](BuclRein& bucle) {
            buclrein_set_mensaje_reintentar(
                bucle, [] { return cadena_w(vista_w(L"x")); }, 5);
        });
    EXPECT_EQ(intentos, 1);
    EXPECT_EQ(recibido, &mio);
}

TEST(buclrein, el_mensaje_se_hace_solo_para_preguntar) {
    const struct {
        bool reintentar;
        bool informar;
        bool en_servicio;
        std::vector<int> hechos_en;  // the attempts, from 1
    } filas[] = {
        {.reintentar = true, .informar = true, .en_servicio = false, .hechos_en = {3, 4}},
        {.reintentar = true, .informar = false, .en_servicio = false, .hechos_en = {}},
        {.reintentar = false, .informar = true, .en_servicio = false, .hechos_en = {}},
        {.reintentar = true, .informar = true, .en_servicio = true, .hechos_en = {}},
    };
    for (const auto& f : filas) {
        SCOPED_TRACE(testing::Message() << f.reintentar << f.informar << f.en_servicio);
        buclrein_establece_politica(2, 0);
        if (f.en_servicio) {
            buclrein_establece_modo_servicio_sin_reintentos();
        }
        contesta([](const pregunta& p) -> unsigned short { return p.mensaje == "intento 3"; });
        int intento = 0;
        std::vector<int> hechos;
        i_con_reintentos(
            f.reintentar, f.informar, [&] { return ++intento == 0; },
            [&](BuclRein& bucle) {
                buclrein_set_mensaje_reintentar(
                    bucle,
                    [&] {
                        hechos.push_back(intento);
                        return cadena_w(vista_w(w("intento " + std::to_string(intento))));
                    },
                    0);
            });
        i_restablece_modo_servicio();
        EXPECT_EQ(hechos, f.hechos_en);
        EXPECT_EQ(toma_preguntas().size(), f.hechos_en.size());
        toma_esperas();
    }
}

// The usual loop: what the last attempt told is what its failure says.
TEST(buclrein, insiste_con_lo_que_el_ultimo_intento_cuenta) {
    struct desenlace {
        bool hecho;
        unsigned long codigo;
    };
    struct fila {
        bool informar;
        int bien_en;
        int intentos;
        bool resultado;
        std::vector<std::string> preguntas;
    };
    const fila filas[] = {
        {.informar = true, .bien_en = 1, .intentos = 1, .resultado = true, .preguntas = {}},
        {.informar = true, .bien_en = 3, .intentos = 3, .resultado = true, .preguntas = {}},
        {.informar = true, .bien_en = 0, .intentos = 3, .resultado = false, .preguntas = {"intento 3"}},
        {.informar = false, .bien_en = 0, .intentos = 3, .resultado = false, .preguntas = {}},
    };
    for (const fila& f : filas) {
        buclrein_establece_politica(2, 0);
        int intento = 0;
        const bool bien = i_insiste(
            f.informar,
            [&] {
                ++intento;
                return desenlace{intento == f.bien_en, 1000u + static_cast<unsigned>(intento)};
            },
            [&] { return cadena_w(vista_w(w("intento " + std::to_string(intento)))); });
        EXPECT_EQ(bien, f.resultado) << f.bien_en;
        EXPECT_EQ(intento, f.intentos) << f.bien_en;
        const std::vector<pregunta> preguntas = toma_preguntas();
        ASSERT_EQ(preguntas.size(), f.preguntas.size()) << f.bien_en;
        for (std::size_t i = 0; i < preguntas.size(); ++i) {
            EXPECT_EQ(preguntas[i].mensaje.substr(0, f.preguntas[i].size()), f.preguntas[i]);
            EXPECT_EQ(preguntas[i].codigo, 1000u + static_cast<unsigned>(f.intentos));
        }
        EXPECT_EQ(toma_esperas().size(), static_cast<std::size_t>(std::min(f.intentos - 1, 2)));
    }
}

TEST(buclrein, la_politica_es_la_de_cuando_nace_el_bucle) {
    buclrein_establece_politica(1, 100);
    BuclRein bucle = buclrein_crea(true, false);
    buclrein_establece_politica(9, 100);
    buclrein_set_mensaje_reintentar(
        bucle, [&] { return cadena_w(vista_w(L"x")); }, 0);
    EXPECT_TRUE(buclrein_reintentar(bucle, false));
    EXPECT_FALSE(buclrein_reintentar(bucle, false));
    EXPECT_EQ(toma_esperas(), std::vector<unsigned long>{100});
}

TEST(buclrein, el_primer_reintento_solo_lo_es_tras_un_fallo) {
    BuclRein bucle = buclrein_crea(true, true);
    EXPECT_FALSE(buclrein_es_el_primer_reintento_antes_de_mostrar_aviso(bucle));
    buclrein_set_mensaje_reintentar(
        bucle, [&] { return cadena_w(vista_w(L"x")); }, 0);
    EXPECT_TRUE(buclrein_es_el_primer_reintento_antes_de_mostrar_aviso(bucle));
    EXPECT_TRUE(buclrein_es_el_primer_reintento_antes_de_mostrar_aviso(bucle));  // asking changes nothing
    EXPECT_TRUE(buclrein_reintentar(bucle, false));
    EXPECT_FALSE(buclrein_es_el_primer_reintento_antes_de_mostrar_aviso(bucle));
    toma_esperas();
}

TEST(buclrein, sin_fallo_anotado_se_pregunta_sin_texto_y_sin_codigo) {
    buclrein_establece_politica(0, 0);
    contesta([](const pregunta&) -> unsigned short { return 0; });
    BuclRein bucle = buclrein_crea(true, true);
    EXPECT_FALSE(buclrein_reintentar(bucle, false));
    const std::vector<pregunta> preguntas = toma_preguntas();
    ASSERT_EQ(preguntas.size(), 1u);
    EXPECT_EQ(preguntas[0].mensaje, "");
    EXPECT_EQ(preguntas[0].codigo, 0u);
}
