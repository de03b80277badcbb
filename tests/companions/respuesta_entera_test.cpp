// Texts that the system tells into a room: how often it is asked, and with which room.
#include "companions/respuesta_entera.hpp"

#include "apoyo/apoyo.hpp"

using namespace apoyo;
using namespace interno;

namespace {

// What the system answers, time after time: a length that fits, the room that it needs, or 0.
struct sistema_que_contesta {
    std::vector<unsigned long> respuestas;
    std::vector<unsigned long> sitios;  // that it was offered

    unsigned long operator()(char* destino, unsigned long sitio) {
        const unsigned long cuantos = respuestas.at(sitios.size());
        sitios.push_back(sitio);
        std::fill_n(destino, std::min(cuantos, sitio), 'x');
        return cuantos;
    }
};

}  // namespace

TEST(respuesta_entera, se_pregunta_hasta_que_cabe) {
    const struct {
        std::vector<unsigned long> respuestas, sitios;
        unsigned long longitud;  // of the text; 0 for none
    } filas[] = {
        {{0}, {512}, 0},
        {{1}, {512}, 1},
        {{511}, {512}, 511},
        {{512, 511}, {512, 513}, 511},
        {{512, 512}, {512, 513}, 512},
        {{513, 513}, {512, 514}, 513},
        // What has grown in the meantime, and what has gone.
        {{600, 601, 601}, {512, 601, 602}, 601},
        {{600, 9000, 3}, {512, 601, 9001}, 3},
        {{600, 0}, {512, 601}, 0},
        {{600, 700, 0}, {512, 601, 701}, 0},
    };
    for (const auto& fila : filas) {
        sistema_que_contesta que_contesta{fila.respuestas, {}};
        const cadena_a texto = i_respuesta_entera<char>(std::ref(que_contesta));
        EXPECT_EQ(que_contesta.sitios, fila.sitios);
        EXPECT_EQ(texto.es_nula(), fila.longitud == 0) << fila.respuestas[0];
        EXPECT_EQ(std::string(texto.ver()), std::string(fila.longitud, 'x')) << fila.respuestas[0];
    }
}
