// A real link to a directory for a test: made and removed by Windows where it can, and under Wine by the programs of
// the system underneath (Wine makes no links, and does not remove them either). Texts are UTF-8. Windows only; nothing of
// the library is needed.
//
//     apoyo::enlace enlace(d.ruta("a"), "arriba", "..\\b");   // a\arriba -> b
//     if (!enlace.hecho()) GTEST_SKIP() << enlace.motivo();
// What it points to is written with `\`: Windows follows no link that has a `/` in it. Where a program that makes links
// has been started and there is none, that is a failure.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <string>

namespace apoyo {

class enlace {
public:
    enlace(const std::string& directorio, const std::string& nombre, const std::string& destino)
        : directorio_(i_ancho(directorio)),
          ruta_(directorio_ + L"\\" + i_ancho(nombre)),
          nombre_(nombre),
          destino_(destino) {
        hazlo();
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

    // Why there is none.
    std::string motivo() const {
        return "no link can be made here (Windows: error " + std::to_string(codigo_) +
               ", and there is no ln)";
    }

    // Makes it, unless it is there; once more when a test has taken it away. Answers whether it is there.
    bool hazlo() {
        constexpr DWORD sin_privilegio = 2;
        if (!hecho()) {
            const bool creado = ::CreateSymbolicLinkW(ruta_.c_str(), i_ancho(destino_).c_str(),
                                                      SYMBOLIC_LINK_FLAG_DIRECTORY | sin_privilegio) != 0;
            codigo_ = creado ? ERROR_SUCCESS : ::GetLastError();
        }
        if (!hecho()) {  // Wine promises what it does not do
            std::string destino = destino_;
            std::replace(destino.begin(), destino.end(), '\\', '/');
            corre_debajo("ln", "-s \"" + destino + "\" \"" + nombre_ + "\"", true);
        }
        return hecho();
    }

private:
    static std::wstring i_ancho(const std::string& utf8) {
        const int n = static_cast<int>(utf8.size());
        std::wstring texto(utf8.size(), L'\0');
        texto.resize(static_cast<std::size_t>(
            ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), n, texto.data(), static_cast<int>(texto.size()))));
        return texto;
    }

    // Such a program cannot be waited for: what it does in the directory is. Nor has it handles to close: Wine answers
    // with what was on its stack, which may be another's.
    void corre_debajo(const std::string& programa, const std::string& argumentos, bool habra_enlace) const {
        const HANDLE cambios = ::FindFirstChangeNotificationW(
            directorio_.c_str(), FALSE, FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_DIR_NAME);
        ASSERT_NE(cambios, INVALID_HANDLE_VALUE) << "error " << ::GetLastError();
        std::wstring orden = i_ancho(programa + " " + argumentos);
        STARTUPINFOW comienzo = {};
        comienzo.cb = sizeof comienzo;
        PROCESS_INFORMATION proceso = {};
        if (::CreateProcessW(i_ancho("Z:\\bin\\" + programa).c_str(), orden.data(), nullptr, nullptr, FALSE,
                             0, nullptr, directorio_.c_str(), &comienzo, &proceso)) {
            constexpr DWORD paciencia_ms = 30'000;
            while (hecho() != habra_enlace && ::WaitForSingleObject(cambios, paciencia_ms) == WAIT_OBJECT_0) {
                ::FindNextChangeNotification(cambios);
            }
            EXPECT_EQ(hecho(), habra_enlace) << programa << " has been started and has not done it";
        } else {
            const DWORD codigo = ::GetLastError();
            // Where there is no Unix side there are no such programs.
            EXPECT_TRUE(codigo == ERROR_PATH_NOT_FOUND || codigo == ERROR_FILE_NOT_FOUND)
                << "no " << programa << ": error " << codigo;
        }
        ::FindCloseChangeNotification(cambios);
    }

    std::wstring directorio_;
    std::wstring ruta_;
    std::string nombre_;
    std::string destino_;
    DWORD codigo_ = ERROR_SUCCESS;
};

}  // namespace apoyo
