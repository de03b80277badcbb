#include "entradas.hpp"

#include "ficheros.hpp"
#include "sistema_windows.hpp"

namespace mando {

namespace {

struct atributo {
    unsigned long bit;
    wchar_t letra;
    std::string_view nombre;
};
constexpr atributo marcas[] = {
    {.bit = FILE_ATTRIBUTE_READONLY, .letra = L'r', .nombre = "read_only"},
    {.bit = FILE_ATTRIBUTE_HIDDEN, .letra = L'h', .nombre = "hidden"},
    {.bit = FILE_ATTRIBUTE_SYSTEM, .letra = L's', .nombre = "system"},
    {.bit = FILE_ATTRIBUTE_ARCHIVE, .letra = L'a', .nombre = "archive"},
};

}  // namespace

std::wstring extension_de(const std::wstring& nombre) {
    const size_t punto = nombre.rfind(L'.');
    if (punto == nombre.npos || punto == 0 || nombre.find(L' ', punto) != nombre.npos) {
        return {};
    }
    return nombre.substr(punto + 1);
}

std::wstring nombre_de(const entrada& e) {
    return e.es_directorio ? e.nombre + L'\\' : e.nombre;
}

std::wstring letras_de_atributos(const entrada& e) {
    std::wstring letras(1, e.es_enlace ? L'l' : e.es_directorio ? L'd' : L'-');
    for (const atributo& a : marcas) {
        letras += (e.atributos & a.bit) != 0 ? a.letra : L'-';
    }
    return letras;
}

std::string_view clase_de(const entrada& e) {
    return e.es_enlace ? "link" : e.es_directorio ? "directory" : "file";
}

json json_de(const entrada& e, const std::wstring& nombre, std::string_view clave) {
    json lista = json::lista();
    for (const atributo& a : marcas) {
        if ((e.atributos & a.bit) != 0) {
            lista.agrega(a.nombre);
        }
    }
    return json::objeto()
        .pon(clave, nombre)
        .pon("kind", clase_de(e))
        .pon("size", e.es_directorio ? json() : json(e.bytes))
        .pon("modified", fecha_en_palabras(e.modificada, false, L'T'))
        .pon("modified_seconds", e.modificada)
        .pon("created", fecha_en_palabras(e.creada, false, L'T'))
        .pon("created_seconds", e.creada)
        .pon("attributes", std::move(lista));
}

}  // namespace mando
