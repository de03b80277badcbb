// A real link to a directory for a test: made and removed by Windows where it can, and under Wine by the programs of
// the system underneath (Wine makes no links, and does not remove them either). Windows only.
//
//     apoyo::enlace enlace(d.ruta("a"), "arriba", "..");   // a\arriba -> a\..
//     if (!enlace.hecho()) GTEST_SKIP() << ...;
#pragma once

#include "apoyo/apoyo.hpp"
#include "companions/sistema.hpp"

namespace apoyo {

class enlace {
public:
    enlace(const std::string& directorio, const std::string& nombre, const std::string& destino)
        : directorio_(w(directorio)), nombre_(nombre), ruta_(w(directorio + "\\" + nombre)) {
        constexpr DWORD sin_privilegio = 2;
        ::CreateSymbolicLinkW(ruta_.c_str(), w(destino).c_str(),
                              SYMBOLIC_LINK_FLAG_DIRECTORY | sin_privilegio);
        if (!hecho()) {  // Wine promises what it does not do
            corre_debajo("ln", "-s \"" + destino + "\" \"" + nombre + "\"", true);
        }
    }
    ~enlace() {
        if (hecho() && !::RemoveDirectoryW(ruta_.c_str())) {
            corre_debajo("rm", "\"" + nombre_ + "\"", false);
        }
        EXPECT_FALSE(hecho()) << "the link stays";
    }
    enlace(const enlace&) = delete;
    enlace& operator=(const enlace&) = delete;

    bool hecho() const { return ::GetFileAttributesW(ruta_.c_str()) != INVALID_FILE_ATTRIBUTES; }

private:
    // Such a program cannot be waited for: what it does is. Nor has it handles to close: Wine 10 answers with what was on
    // its stack, which may be another's.
    void corre_debajo(const std::string& programa, const std::string& argumentos, bool habra_enlace) const {
        texto_w orden = w(programa + " " + argumentos);
        STARTUPINFOW comienzo = {};
        comienzo.cb = sizeof comienzo;
        PROCESS_INFORMATION proceso = {};
        if (!::CreateProcessW(w("Z:\\bin\\" + programa).c_str(), orden.data(), nullptr, nullptr, FALSE, 0,
                              nullptr, directorio_.c_str(), &comienzo, &proceso)) {
            const DWORD codigo = ::GetLastError();
            // Where there is no Unix side there are no such programs.
            EXPECT_TRUE(codigo == ERROR_PATH_NOT_FOUND || codigo == ERROR_FILE_NOT_FOUND)
                << "no " << programa << ": error " << codigo;
            return;
        }
        for (int i = 0; i < 1500 && hecho() != habra_enlace; ++i) {
            ::Sleep(20);
        }
    }

    texto_w directorio_;
    std::string nombre_;
    texto_w ruta_;
};

}  // namespace apoyo
