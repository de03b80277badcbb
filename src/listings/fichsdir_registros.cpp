// See fichsdir_registros.hpp.
#include "listings/fichsdir_registros.hpp"

#include "companions/ordena.hpp"
#include "companions/reloj.hpp"

namespace interno {

bool i_comprueba_registro(const Fichsdir* fichsdir) noexcept {
    if (!i_comprueba(fichsdir != nullptr, "(fichsdir) != NULL")) {
        return false;
    }
    i_comprueba(fichsdir->nombre != nullptr, "(fichsdir->nombre) != NULL");
    i_comprueba(fichsdir->fecha >= 0, "fichsdir->fecha >= 0");
    i_comprueba(fichsdir->ruta != nullptr, "(fichsdir->ruta) != NULL");
    return true;
}

namespace {

int i_compara_registros(const void* a, const void* b) {
    return a_vista<char>(static_cast<const Fichsdir*>(a)->nombre)
        .compare(a_vista<char>(static_cast<const Fichsdir*>(b)->nombre));
}

void i_destruye_registro(void** registro) {
    auto* fichsdir = static_cast<Fichsdir*>(*registro);
    i_comprueba_registro(fichsdir);
    destruye_fichsdir()(fichsdir);
}

void i_toma_ficheros(vector_interno<void*>& registros, const wchar_t* directorio, const interrupcion& corta) {
    const vista_w ruta = a_vista(directorio);
    conversor_de_fechas fechas;
    i_recorre_directorio(directorio, corta, [&](const WIN32_FIND_DATAW& e) {
        if (i_es_directorio(e)) {
            return;
        }
        auto nuevo = registro<Fichsdir>(static_cast<Fichsdir*>(i_reserva(sizeof(Fichsdir))));
        nuevo->nombre = utunicode_UNICODE_a_ANSI(i_nombre_de_entrada(e)).suelta();
        nuevo->fecha = fechas.segundos_locales_desde_1970(e.ftLastWriteTime);
        nuevo->protegido = (e.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
        nuevo->ruta = cadena_w(ruta).suelta();
        registros.anade(nuevo.suelta());
    });
}

}  // namespace

objeto<ArrPunteroConTipo> i_ficheros(const wchar_t* directorio, const interrupcion& corta) {
    auto lista = objeto<ArrPunteroConTipo>::crea();
    i_toma_ficheros(lista->punteros, directorio, corta);
    return lista;
}

objeto<ApunOrde> i_ficheros_ordenados() {
    auto conjunto = objeto<ApunOrde>::crea();
    conjunto->compara = i_compara_registros;
    conjunto->destruye = i_destruye_registro;
    return conjunto;
}

objeto<ApunOrde> i_ficheros_existentes_ordenados(const wchar_t* directorio) {
    auto conjunto = i_ficheros_ordenados();
    i_toma_ficheros(conjunto->registros, directorio, {});
    // Sorted once instead of at each insertion: the outcome is the same.
    ordena_estable(conjunto->registros.data(), conjunto->registros.size(), i_compara_registros);
    return conjunto;
}

}  // namespace interno
