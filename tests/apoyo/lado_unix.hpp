// A directory of a test with a Unix side to it: shell scripts that put into it what no Windows call would make (names
// that Windows cuts or takes for devices, links, names that are no text), and a look at it that passes by Wine.
// Windows only.
//
//     LADO_UNIX(u);                                  // or the test is skipped
//     u.corre("mkdir t; : > 't/f.'");                // in the directory
//     EXPECT_EQ(u.censo("t"), (lista{"f f."}));
#pragma once

#include "apoyo/directorio.hpp"
#include "companions/sistema.hpp"

namespace apoyo {

class lado_unix {
public:
    lado_unix() : base_(i_nombre_unix(d.ruta_w())), taller_unix_(i_nombre_unix(taller_.ruta_w())) {}
    ~lado_unix() {
        if (hay()) {
            corre("chmod -R u+rwx . 2>/dev/null; find . -mindepth 1 -delete");
        }
    }
    lado_unix(const lado_unix&) = delete;
    lado_unix& operator=(const lado_unix&) = delete;

    const directorio_temporal d;

    // False on a system without one.
    bool hay() const { return !base_.empty(); }
    const std::string& base() const { return base_; }

    // Runs a script of /bin/sh in the directory, to its end; answers what it wrote.
    std::string corre(const std::string& guion) const {
        taller_.borra("hecho");
        taller_.borra("salida");
        // The shell reads its script as it goes: it must not find the next one behind its end.
        taller_.fichero("guion", "cd '" + base_ + "' || exit\n{\n" + guion + "\n} >'" + taller_unix_ +
                                     "/salida' 2>&1\n: >'" + taller_unix_ + "/hecho'; exit\n");
        texto_w linea = w("/bin/sh \"" + taller_unix_ + "/guion\"");
        STARTUPINFOW arranque = {};
        arranque.cb = sizeof arranque;
        PROCESS_INFORMATION proceso = {};  // of a Unix program it holds nothing, in Wine 10 not even zeros
        const BOOL hecho = ::CreateProcessW(L"\\\\?\\unix\\bin\\sh", linea.data(), nullptr, nullptr, FALSE, 0,
                                            nullptr, nullptr, &arranque, &proceso);
        EXPECT_TRUE(hecho) << "no shell: " << ::GetLastError();
        if (!hecho) {
            return {};
        }
        for (int i = 0; i < 6'000 && !taller_.existe("hecho"); ++i) {
            ::Sleep(5);  // a Unix process has no handle to wait for
        }
        EXPECT_TRUE(taller_.existe("hecho")) << "a script does not end: " << guion;
        return taller_.contenido("salida");
    }

    // What lies below a directory, as bytes and in their order: "f a/b" a file, "d a" a directory, "l a" a link.
    std::vector<std::string> censo(const std::string& donde) const {
        return i_lineas(corre("[ ! -d " + donde + " ] || find " + donde +
                              "/ -mindepth 1 -printf '%y %P\\n' | LC_ALL=C sort"));
    }
    // The same with the length, the permissions and the date of each file: what must not change at all.
    std::vector<std::string> censo_exacto(const std::string& donde) const {
        return i_lineas(corre("find " + donde +
                              "/ \\( -type f -printf 'f %P %s %m %T@\\n' \\) -o -printf '%y %P %m %l\\n' | "
                              "LC_ALL=C sort"));
    }

private:
    static std::string i_nombre_unix(const texto_w& ruta) {
        using a_unix = char*(CDECL*)(const WCHAR*);
        const auto traduce = reinterpret_cast<a_unix>(reinterpret_cast<void*>(
            ::GetProcAddress(::GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name")));
        if (traduce == nullptr) {
            return {};
        }
        char* nombre = traduce(ruta.c_str());
        const std::string resultado = nombre == nullptr ? "" : nombre;
        ::HeapFree(::GetProcessHeap(), 0, nombre);
        return resultado;
    }
    static std::vector<std::string> i_lineas(const std::string& texto) {
        std::vector<std::string> resultado;
        std::size_t i = 0;
        for (std::size_t fin; (fin = texto.find('\n', i)) != texto.npos; i = fin + 1) {
            resultado.push_back(texto.substr(i, fin - i));
        }
        return resultado;
    }

    const directorio_temporal taller_;
    std::string base_;
    std::string taller_unix_;
};

}  // namespace apoyo

// Declares one in a test that is skipped where there is none.
#define LADO_UNIX(u)                         \
    const apoyo::lado_unix u;                \
    if (!u.hay()) {                          \
        GTEST_SKIP() << "no Unix side here"; \
    }

// In a test that is skipped, too, where the system does not follow links.
#define LADO_UNIX_QUE_SIGUE_ENLACES(u)                 \
    LADO_UNIX(u)                                       \
    if (!interno::sistema.sigue_enlaces()) {           \
        GTEST_SKIP() << "links are not followed here"; \
    }
