// What Windows does and Wine does not, to listings: behind the imitation of Windows.
#include <iterator>

#include "apoyo/como_windows.hpp"
#include "apoyo/directorio.hpp"
#include "fichsdir.h"
#include "listings/listas_ficheros.hpp"
#include "lumodir.h"
#include "timefich.h"

using namespace apoyo;

namespace {

// Each record as "path: name name".
std::vector<std::string> arbol_listado(const std::string& base) {
    std::vector<std::string> resultado;
    unsigned long num = 0;
    ListaFicheros_u* listas = nullptr;
    lumodir_lista_de_ficheros_y_directorios_recursivamente_UNICODE(w(base).c_str(), nullptr, &num, &listas);
    for (unsigned long i = 0; i < num; ++i) {
        std::string registro = u8(listas[i].path) + ":";
        for (unsigned long k = 0; k < listas[i].num; ++k) {
            registro += " " + u8(listas[i].lista[k]);
        }
        resultado.push_back(registro);
    }
    lumodir_libera_lista_de_ficheros_en_directorio_y_subdirectorios_UNICODE(num, &listas);
    return resultado;
}

void destruye_ficha_de_fichero(void** registro) {
    fichsdir_destruye(reinterpret_cast<Fichsdir**>(registro));
}

}  // namespace

TEST(listados_en_windows, se_lista_lo_mismo_por_donde_se_deje) {
    const directorio_temporal d;
    d.fichero("R\\r \u00f1.txt");
    d.fichero("R\\a\\1");
    d.directorio("R\\b\\vacio");
    const std::string r = d.ruta("R");
    const std::vector<std::string> esperado = {r + ": r \u00f1.txt",
                                               r + "\\b:", r + "\\b\\vacio:", r + "\\a: 1"};
    {
        const como_windows windows({.marcas_sin_sentido = true});
        EXPECT_EQ(arbol_listado(r), esperado);
    }
    constexpr DWORD codigos[] = {ERROR_INVALID_FUNCTION,  ERROR_GEN_FAILURE,   ERROR_NOT_SUPPORTED,
                                 ERROR_INVALID_PARAMETER, ERROR_INVALID_LEVEL, ERROR_INTERNAL_ERROR};
    for (const DWORD codigo : codigos) {
        for (const DWORD sin_numeros : {DWORD{0}, codigo}) {
            const como_windows windows({.listado_con_numeros = codigo, .listado_sin_numeros = sin_numeros});
            EXPECT_EQ(arbol_listado(r), esperado) << codigo << " " << sin_numeros;
            EXPECT_GT(windows.intervenciones(), 0u);
        }
    }
}

TEST(listados_en_windows, las_fechas_van_con_las_reglas_de_su_anyo) {
    for (const reglas_por_anyo::zona& zona : reglas_por_anyo::zonas) {
        SCOPED_TRACE(zona.nombre);
        const como_windows windows({.zona = &zona});
        const directorio_temporal d;
        for (const reglas_por_anyo::tramo& t : zona.tramos) {
            d.fichero("f" + std::to_string(t.desde));
            d.pon_fecha("f" + std::to_string(t.desde), t.desde + 86'400);
        }
        ArrPunteroConTipo* registros = fichsdir_ficheros_u(d.ruta_w().c_str());
        ASSERT_EQ(arr_NumElemsPuntero(registros), zona.tramos.size());
        for (unsigned long i = 0; i < zona.tramos.size(); ++i) {
            const auto* uno = static_cast<const Fichsdir*>(arr_GetPunteroConTipo(registros, i));
            const long long fecha = fichsdir_fecha_fichero(uno);
            EXPECT_EQ(std::count_if(zona.tramos.begin(), zona.tramos.end(),
                                    [&](const reglas_por_anyo::tramo& t) {
                                        return t.desde + 86'400 + t.minutos * 60ll == fecha;
                                    }),
                      1)
                << fecha;
        }
        arr_DestruyeEstructurasConTipo(&registros, destruye_ficha_de_fichero);
    }
}
