// A model of a part of the registry: keys without letter case, in the order of their names, with their values.
#pragma once

#include "estado/volumen.hpp"

namespace estado {

struct valor_de_clave {
    texto_w nombre;
    unsigned long tipo = 0;
    std::string bytes;
};

struct clave {
    texto_w nombre = {};
    std::map<texto_w, clave> hijas = {};
    std::map<texto_w, valor_de_clave> valores = {};

    clave* busca(const texto_w& camino) {
        clave* c = this;
        texto_w n;
        for (const wchar_t u : camino + L"\\") {
            if (u != L'\\') {
                n.push_back(u);
                continue;
            }
            if (!n.empty()) {
                const auto i = c->hijas.find(pliega(n));
                if (i == c->hijas.end()) {
                    return nullptr;
                }
                c = &i->second;
                n.clear();
            }
        }
        return c;
    }
    clave& crea(const texto_w& camino) {
        clave* c = this;
        texto_w n;
        for (const wchar_t u : camino + L"\\") {
            if (u != L'\\') {
                n.push_back(u);
            } else if (!n.empty()) {
                clave& hija = c->hijas[pliega(n)];
                hija.nombre = hija.nombre.empty() ? n : hija.nombre;
                c = &hija;
                n.clear();
            }
        }
        return *c;
    }
};

}  // namespace estado
