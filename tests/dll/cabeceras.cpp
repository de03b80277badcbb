// See cabeceras.hpp. The form of the headers is fixed enough for regular expressions; what they cannot read makes
// a test fail, never pass.
#include "dll/cabeceras.hpp"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>

namespace dll {
namespace {

std::string en_una_linea(const std::string& texto) {
    std::string resultado = std::regex_replace(texto, std::regex("\\s+"), " ");
    const std::size_t primera = resultado.find_first_not_of(' ');
    if (primera == std::string::npos) {
        return "";
    }
    return resultado.substr(primera, resultado.find_last_not_of(' ') - primera + 1);
}

// The comment that ends right before `posicion`, without its stars.
std::string comentario_antes_de(const std::string& texto, std::size_t posicion) {
    const std::size_t fin = texto.rfind("*/", posicion);
    if (fin == std::string::npos || en_una_linea(texto.substr(fin + 2, posicion - fin - 2)) != "") {
        return "";
    }
    const std::size_t principio = texto.rfind("/**", fin);
    return std::regex_replace(texto.substr(principio + 3, fin - principio - 3), std::regex("\n ?\\*? ?"),
                              "\n");
}

// Pieces of a comment that begin at each @.
std::map<std::string, std::string> parametros_del_comentario(const std::string& comentario) {
    std::map<std::string, std::string> resultado;
    std::size_t p = comentario.find("@param");
    while (p != std::string::npos) {
        const std::size_t siguiente = comentario.find("\n@", p + 1);
        const std::string trozo = en_una_linea(comentario.substr(p + 6, siguiente - p - 6));
        std::smatch m;
        if (std::regex_match(trozo, m, std::regex("((?:\\w+, )*\\w+) (.*)"))) {
            std::istringstream nombres(m[1]);
            for (std::string nombre; std::getline(nombres, nombre, ',');) {
                resultado[en_una_linea(nombre)] = m[2];
            }
        }
        p = comentario.find("@param", p + 1);
    }
    return resultado;
}

std::vector<parametro> parametros_de(const std::string& lista, const std::string& comentario) {
    std::vector<parametro> resultado;
    const std::map<std::string, std::string> dichos = parametros_del_comentario(comentario);
    std::istringstream trozos(lista);
    for (std::string trozo; std::getline(trozos, trozo, ',');) {
        std::smatch m;
        const std::string uno = en_una_linea(trozo);
        if (uno != "void" && std::regex_match(uno, m, std::regex("(.*[ *])(\\w+)"))) {
            const auto dicho = dichos.find(m[2]);
            resultado.push_back({en_una_linea(m[1]), m[2], dicho == dichos.end() ? "" : dicho->second});
        }
    }
    return resultado;
}

void lee_cabecera(const std::filesystem::path& fichero, std::map<std::string, declaracion>& todas) {
    std::ifstream entrada(fichero, std::ios::binary);
    const std::string texto((std::istreambuf_iterator<char>(entrada)), std::istreambuf_iterator<char>());
    const std::string marca = "\nLUMODIR_API ";
    std::string comentario;
    for (std::size_t p = texto.find(marca); p != std::string::npos; p = texto.find(marca, p + 1)) {
        const std::string entera = en_una_linea(texto.substr(p, texto.find(';', p) - p));
        std::smatch m;
        if (std::regex_match(entera, m, std::regex("LUMODIR_API (.*[ *])(\\w+)\\((.*)\\)"))) {
            // A twin is documented by what stands above it.
            const std::string propio = comentario_antes_de(texto, p + 1);
            const bool es_gemela = std::regex_match(propio, std::regex(" 8-bit flavour[^@\n]*"));
            comentario = es_gemela ? comentario : propio;
            todas[m[2]] = {fichero.filename().string(), parametros_de(m[3], comentario)};
        }
    }
}

}  // namespace

bool parametro::admite_null() const {
    return std::regex_search(comentario,
                             std::regex("not reported|not wanted|or NULL|when given|may be NULL"));
}

std::string parametro::expresion_de_null() const {
    std::smatch m;
    // `NULL is reported as "(x) != NULL"` and `Reported: NULL ("x != NULL")`
    return std::regex_search(comentario, m, std::regex("NULL (?:is reported as \"|\\(\")([^\"]*)\""))
               ? m[1].str()
               : "";
}

const std::map<std::string, declaracion>& declaraciones() {
    static const std::map<std::string, declaracion> todas = [] {
        std::map<std::string, declaracion> resultado;
        for (const auto& entrada : std::filesystem::recursive_directory_iterator(L"" LUMODIR_CABECERAS)) {
            if (entrada.path().extension() == ".h") {
                lee_cabecera(entrada.path(), resultado);
            }
        }
        return resultado;
    }();
    return todas;
}

}  // namespace dll
