#include "respuesta.hpp"

#include "consola.hpp"

namespace mando {

void escribe_json(const json& que) {
    salida().escribe(que.texto());
}

void di_queja(std::wstring_view texto, estilo como) {
    errores().escribe("lumodir: ", como).linea(texto);
}

int responde(const peticion& p, const json& para_guiones, const std::function<void()>& en_palabras,
             int codigo) {
    if (p.en_json) {
        escribe_json(para_guiones);
    } else {
        en_palabras();
    }
    return codigo;
}

int responde(const peticion& p, std::string_view clave, const std::wstring& texto, int codigo) {
    return responde(
        p, json::objeto().pon(clave, texto), [&] { salida().linea(std::wstring_view(texto)); }, codigo);
}

void respuesta_por_piezas::pieza(json para_guiones, const std::function<void()>& en_palabras) {
    if (en_json_) {
        lista_.agrega(std::move(para_guiones));
    } else {
        en_palabras();
    }
}

void respuesta_por_piezas::pieza(const std::function<json()>& para_guiones,
                                 const std::function<void()>& en_palabras) {
    pieza(en_json_ ? para_guiones() : json(), en_palabras);
}

int respuesta_por_piezas::acaba(bool bien, const std::function<void()>& al_final) {
    if (en_json_) {
        escribe_json(lista_);
    } else {
        al_final();
    }
    return bien ? hecho : no;
}

json respuesta::i_objeto(const std::vector<valor>& valores) const {
    json objeto = json::objeto();
    for (const bool los_que_nombran : {true, false}) {
        for (size_t i = 0; i < campos_.size(); ++i) {
            if (campos_[i].nombra == los_que_nombran && !campos_[i].clave.empty()) {
                objeto.pon(campos_[i].clave, valores[i].para_guiones);
            }
        }
    }
    return objeto;
}

void respuesta::falla(const std::wstring& nombre, const std::wstring& por_que) {
    if (!en_json_) {
        di_queja(por_que);
        return;
    }
    std::vector<valor> valores;
    for (const campo& c : campos_) {
        valores.push_back(c.nombra ? valor(nombre) : valor(json(), celda(L"")));
    }
    fallidas_.emplace_back(filas_.size(), i_objeto(valores).pon("error", por_que));
}

json respuesta::como_lista() const {
    json lista = json::lista();
    auto fallida = fallidas_.begin();
    for (size_t i = 0; i <= filas_.size(); ++i) {
        for (; fallida != fallidas_.end() && fallida->first == i; ++fallida) {
            lista.agrega(fallida->second);
        }
        if (i < filas_.size()) {
            lista.agrega(i_objeto(filas_[i]));
        }
    }
    return lista;
}

void respuesta::pinta() const {
    if (filas_.empty()) {
        return;
    }
    std::vector<columna> columnas;
    for (const campo& c : campos_) {
        if (!c.como.titulo.vacia()) {
            columnas.push_back(c.como);
        }
    }
    tabla t(columnas);
    for (const std::vector<valor>& valores : filas_) {
        std::vector<celda> celdas;
        for (size_t i = 0; i < campos_.size(); ++i) {
            if (!campos_[i].como.titulo.vacia()) {
                celdas.push_back(valores[i].para_personas);
            }
        }
        t.fila(std::move(celdas));
    }
    if (!total_.empty()) {
        t.fila(total_);
    }
    t.pinta(salida());
}

void respuesta::di_lista() const {
    if (en_json_) {
        escribe_json(como_lista());
    } else {
        pinta();
    }
}

void respuesta::pinta_ficha() const {
    ficha datos;
    for (size_t i = 0; i < campos_.size(); ++i) {
        if (!campos_[i].como.titulo.vacia()) {
            datos.push_back({campos_[i].como.titulo, filas_.front()[i].para_personas});
        }
    }
    mando::pinta_ficha(salida(), datos);
}

void respuesta::di_ficha() const {
    if (en_json_) {
        escribe_json(i_objeto(filas_.front()));
    } else {
        pinta_ficha();
    }
}

}  // namespace mando
