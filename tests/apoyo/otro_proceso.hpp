// Another process that holds a file open. Windows only.
//
//     apoyo::otro_proceso sujeta(ruta, GENERIC_READ, 0);   // open when the constructor is through
//     ...
//     sujeta.suelta();                                     // closed when this returns
#pragma once

#include "apoyo/hijo.hpp"

namespace apoyo {

// What the other process does: opens "ACCESS SHARE PATH" and holds it until it is told to end.
inline const papel papel_sujeta_ruta("sujeta_ruta", [] {
    const texto_w dato = hijo_dato();
    wchar_t* resto = nullptr;
    const DWORD acceso = ::wcstoul(dato.c_str(), &resto, 10);
    const DWORD compartir = ::wcstoul(resto, &resto, 10);
    const HANDLE h = ::CreateFileW(resto + 1, acceso, compartir, nullptr, OPEN_EXISTING,
                                   FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (h == INVALID_HANDLE_VALUE) {
        return UINT{::GetLastError()};  // whoever waits for it tells that
    }
    hijo_listo();
    hijo_espera_fin();
    return UINT{0};
});

class otro_proceso {
public:
    otro_proceso(const std::string& ruta, DWORD acceso, DWORD compartir)
        : hijo_("sujeta_ruta", w(std::to_string(acceso) + " " + std::to_string(compartir) + " " + ruta)) {
        EXPECT_TRUE(hijo_.espera_listo()) << "the other process cannot open " << ruta;
    }

    void suelta() {
        hijo_.suelta();
        EXPECT_EQ(hijo_.espera_fin(), 0u);
    }

private:
    proceso_hijo hijo_;
};

}  // namespace apoyo
