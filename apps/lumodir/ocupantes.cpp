#include "ocupantes.hpp"

#include <algorithm>

namespace mando {

puerta_de_ocupantes puerta_ocupantes;

namespace {

template <typename F>
void i_busca(HMODULE modulo, const char* nombre, F& destino) {
    destino = reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(modulo, nombre)));
}

class sesion {
public:
    explicit sesion(const puerta_de_ocupantes& puerta) : puerta_(puerta) {
        wchar_t clave[CCH_RM_SESSION_KEY + 1] = {};
        abierta_ = puerta_.empieza(&numero_, 0, clave) == ERROR_SUCCESS;
    }
    ~sesion() {
        if (abierta_) {
            puerta_.termina(numero_);
        }
    }
    sesion(const sesion&) = delete;
    sesion& operator=(const sesion&) = delete;
    explicit operator bool() const { return abierta_; }

    bool registra(const wchar_t* ruta) const {
        return puerta_.registra(numero_, 1, &ruta, 0, nullptr, 0, nullptr) == ERROR_SUCCESS;
    }
    // Empty when the system does not tell.
    std::vector<RM_PROCESS_INFO> lista() const {
        std::vector<RM_PROCESS_INFO> todos;
        constexpr int intentos = 5;  // programs come and go between the question for the number and the list
        for (int i = 0; i < intentos; ++i) {
            unsigned hacen_falta = 0, caben = static_cast<unsigned>(todos.size());
            unsigned long motivos = 0;
            const unsigned long codigo = puerta_.lista(numero_, &hacen_falta, &caben,
                                                       todos.empty() ? nullptr : todos.data(), &motivos);
            if (codigo == ERROR_SUCCESS) {
                todos.resize(std::min<size_t>(caben, todos.size()));
                return todos;
            }
            if (codigo != ERROR_MORE_DATA || hacen_falta == 0) {
                return {};
            }
            todos.assign(hacen_falta, RM_PROCESS_INFO{});
        }
        return {};
    }

private:
    const puerta_de_ocupantes& puerta_;
    unsigned long numero_ = 0;
    bool abierta_ = false;
};

}  // namespace

void abre_puerta_de_ocupantes() {
    if (puerta_ocupantes.empieza != nullptr) {
        return;
    }
    // Nowhere but in the system's own directory.
    HMODULE modulo = LoadLibraryExW(L"rstrtmgr.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (modulo == nullptr) {
        return;
    }
    i_busca(modulo, "RmStartSession", puerta_ocupantes.empieza);
    i_busca(modulo, "RmRegisterResources", puerta_ocupantes.registra);
    i_busca(modulo, "RmGetList", puerta_ocupantes.lista);
    i_busca(modulo, "RmEndSession", puerta_ocupantes.termina);
}

std::vector<ocupante> quien_tiene(const std::wstring& ruta_completa) {
    abre_puerta_de_ocupantes();
    const puerta_de_ocupantes& puerta = puerta_ocupantes;
    if (!puerta.empieza || !puerta.registra || !puerta.lista || !puerta.termina) {
        return {};
    }
    const sesion abierta(puerta);
    if (!abierta || !abierta.registra(ruta_completa.c_str())) {
        return {};
    }
    std::vector<ocupante> ocupantes;
    for (const RM_PROCESS_INFO& p : abierta.lista()) {
        if (p.Process.dwProcessId != GetCurrentProcessId()) {
            ocupantes.push_back({p.Process.dwProcessId, p.strAppName});
        }
    }
    return ocupantes;
}

}  // namespace mando
