// The text of a registry value: where it ends and how it is cut into its pieces, in both flavours against the model.
// Nothing past the end of the text may be read. One line, terminators and all.
#include "system/multicadena.hpp"

#include "arnes.hpp"
#include "modelos/multicadena.hpp"

using namespace arnes;

namespace {

template <class C, class T>
void compara(const T& texto) {
    const justo<C> sin_fin(texto, false);
    std::vector<T> dados;
    interno::i_para_cada_trozo(sin_fin.ver(), [&](interno::vista<C> trozo) { dados.emplace_back(trozo); });
    EXIGE_IGUAL(dados, modelos::trozos_de_multicadena(texto));
    const T entero(interno::i_hasta_terminador(sin_fin.ver()));
    EXIGE_IGUAL(entero, texto.substr(0, texto.find(C(0))));
    // The pieces put together as the registry wants them give the same pieces again.
    T bien_hecho;
    for (const T& trozo : dados) {
        EXIGE(!trozo.empty());
        bien_hecho += trozo + T(1, C(0));
    }
    bien_hecho += C(0);
    std::vector<T> otra_vez;
    interno::i_para_cada_trozo(interno::vista<C>(bien_hecho),
                               [&](interno::vista<C> trozo) { otra_vez.emplace_back(trozo); });
    EXIGE_IGUAL(otra_vez, dados);
}

}  // namespace

void arnes::prueba(entrada& e) {
    const texto_a bytes = e.bytes(true);
    compara<char>(bytes);
    compara<wchar_t>(en_unidades(bytes));
}
