#include "orden.hpp"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <thread>

#include "esquema.hpp"
#include "json.hpp"

namespace cli {

// By hand, because lone surrogates have to come through (as WTF-8).
std::wstring w(const std::string& utf8) {
    std::wstring texto;
    for (size_t i = 0; i < utf8.size();) {
        const auto primero = static_cast<unsigned char>(utf8[i++]);
        unsigned siguen = primero < 0x80 ? 0 : primero < 0xE0 ? 1 : primero < 0xF0 ? 2 : 3;
        unsigned c = siguen == 0 ? primero : primero & (0x3Fu >> siguen);
        for (; siguen > 0; --siguen) {
            c = c << 6 | (static_cast<unsigned char>(utf8.at(i++)) & 0x3Fu);
        }
        if (c >= 0x10000) {
            texto += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
            c = 0xDC00 + ((c - 0x10000) & 0x3FF);
        }
        texto += static_cast<wchar_t>(c);
    }
    return texto;
}

std::string u8(const std::wstring& texto) {
    const int de = static_cast<int>(texto.size());
    const int n = WideCharToMultiByte(CP_UTF8, 0, texto.data(), de, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<size_t>(n), '\0');
    WideCharToMultiByte(CP_UTF8, 0, texto.data(), de, utf8.data(), n, nullptr, nullptr);
    return utf8;
}

namespace {

std::wstring i_este_programa() {
    std::wstring ruta(MAX_PATH, L'\0');
    ruta.resize(GetModuleFileNameW(nullptr, ruta.data(), MAX_PATH));
    return ruta;
}

// As the runtime of Windows takes command lines apart again.
std::wstring i_entrecomilla(const std::wstring& argumento) {
    if (!argumento.empty() && argumento.find_first_of(L" \t\"") == argumento.npos) {
        return argumento;
    }
    std::wstring texto = L"\"";
    size_t barras = 0;
    for (const wchar_t c : argumento) {
        if (c == L'\\') {
            ++barras;
            continue;
        }
        texto.append(c == L'"' ? barras * 2 + 1 : barras, L'\\');
        texto += c;
        barras = 0;
    }
    texto.append(barras * 2, L'\\');
    return texto + L"\"";
}

std::string i_lee_todo(HANDLE asa) {
    std::string todo;
    char trozo[4096];
    for (DWORD bytes = 0; ReadFile(asa, trozo, sizeof trozo, &bytes, nullptr) && bytes > 0;) {
        todo.append(trozo, bytes);
    }
    return todo;
}

std::wstring i_largo(const std::string& ruta) {
    return L"\\\\?\\" + w(ruta);
}

void i_borra_todo(const std::wstring& directorio) {
    WIN32_FIND_DATAW e;
    HANDLE busca = FindFirstFileW((directorio + L"\\*").c_str(), &e);
    if (busca != INVALID_HANDLE_VALUE) {
        do {
            const std::wstring nombre = e.cFileName;
            const std::wstring ruta = directorio + L"\\" + nombre;
            if (nombre == L"." || nombre == L"..") {
                continue;
            }
            if ((e.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) &&
                !(e.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT)) {
                i_borra_todo(ruta);
            } else if (e.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
                RemoveDirectoryW(ruta.c_str());
            } else {
                SetFileAttributesW(ruta.c_str(), FILE_ATTRIBUTE_NORMAL);
                DeleteFileW(ruta.c_str());
            }
        } while (FindNextFileW(busca, &e));
        FindClose(busca);
    }
    RemoveDirectoryW(directorio.c_str());
}

}  // namespace

std::string este_programa() {
    return u8(i_este_programa());
}

std::string ruta_de_lumodir() {
    const std::wstring este = i_este_programa();
    return u8(este.substr(0, este.find_last_of(L'\\')) + L"\\" LUMODIR_EXE);
}

struct proceso::tubos {
    HANDLE asa = nullptr;
    std::string salida, errores;
    std::thread lee_salida, lee_errores, escribe_entrada;
};

proceso::proceso(const std::string& programa, const std::vector<std::string>& argumentos,
                 const entorno& donde)
    : tubos_(new tubos) {
    std::wstring linea = i_entrecomilla(w(programa));
    for (const std::string& a : argumentos) {
        linea += L" " + i_entrecomilla(w(a));
    }
    SECURITY_ATTRIBUTES heredable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE entrada[2], salida[2], errores[2];
    for (HANDLE* tubo : {entrada, salida, errores}) {
        CreatePipe(&tubo[0], &tubo[1], &heredable, 0);
    }
    // The child's ends only are inherited.
    SetHandleInformation(entrada[1], HANDLE_FLAG_INHERIT, 0);
    SetHandleInformation(salida[0], HANDLE_FLAG_INHERIT, 0);
    SetHandleInformation(errores[0], HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW como{};
    como.cb = sizeof como;
    if (!donde.con_pantalla) {
        como.dwFlags = STARTF_USESTDHANDLES;
        como.hStdInput = entrada[0];
        // The end that is for reading refuses what is written.
        como.hStdOutput = donde.salida == destino::no_hay                 ? nullptr
                          : donde.salida == destino::no_se_puede_escribir ? entrada[0]
                                                                          : salida[1];
        como.hStdError = errores[1];
    }
    if (donde.salida == destino::ya_no_se_lee) {
        CloseHandle(salida[0]);
        salida[0] = nullptr;
    }
    for (const auto& [nombre, valor] : donde.variables) {
        SetEnvironmentVariableW(w(nombre).c_str(), w(valor).c_str());
    }
    PROCESS_INFORMATION hijo{};
    const std::wstring directorio = w(donde.directorio);
    const auto crea = [&] {
        return CreateProcessW(nullptr, linea.data(), nullptr, nullptr, donde.con_pantalla ? FALSE : TRUE,
                              donde.con_consola || donde.con_pantalla ? CREATE_NO_WINDOW : DETACHED_PROCESS,
                              nullptr, directorio.empty() ? nullptr : directorio.c_str(), &como, &hijo);
    };
    BOOL creado = crea();
    if (!creado && GetLastError() == ERROR_INTERNAL_ERROR) {
        // Under Wine, once in some thousands, a process dies before its program begins.
        std::cout << u8(linea) << ": not begun, error " << ERROR_INTERNAL_ERROR << "; tried once more\n";
        creado = crea();
    }
    EXPECT_TRUE(creado) << u8(linea) << ": error " << GetLastError();
    for (const auto& [nombre, valor] : donde.variables) {
        SetEnvironmentVariableW(w(nombre).c_str(), nullptr);
    }
    CloseHandle(entrada[0]);
    CloseHandle(salida[1]);
    CloseHandle(errores[1]);
    CloseHandle(hijo.hThread);
    tubos_->asa = hijo.hProcess;
    pid_ = hijo.dwProcessId;
    const auto lee = [](HANDLE asa, std::string* texto) {
        *texto = i_lee_todo(asa);
        CloseHandle(asa);
    };
    if (salida[0] != nullptr) {
        tubos_->lee_salida = std::thread(lee, salida[0], &tubos_->salida);
    }
    tubos_->lee_errores = std::thread(lee, errores[0], &tubos_->errores);
    tubos_->escribe_entrada = std::thread([asa = entrada[1], texto = donde.entrada] {
        DWORD bytes = 0;
        WriteFile(asa, texto.data(), static_cast<DWORD>(texto.size()), &bytes, nullptr);
        CloseHandle(asa);
    });
}

proceso::~proceso() {
    espera();
    CloseHandle(tubos_->asa);
    delete tubos_;
}

bool proceso::pulsa_control_c() const {
    // The event goes to everybody on a console; this process joins the child's and does not listen.
    FreeConsole();
    if (!AttachConsole(pid_)) {
        return false;
    }
    SetConsoleCtrlHandler(nullptr, TRUE);
    const BOOL pulsado = GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
    Sleep(200);  // it arrives here too, and is not listened to
    FreeConsole();
    // Children inherit the deafness.
    SetConsoleCtrlHandler(nullptr, FALSE);
    return pulsado != FALSE;
}

void* proceso::cierra_la_ventana() const {
    // The system starts this routine in every program of a console that is closed; it calls the program's handlers.
    const auto rutina = reinterpret_cast<LPTHREAD_START_ROUTINE>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernelbase"), "CtrlRoutine")));
    EXPECT_NE(rutina, nullptr);
    void* const que = reinterpret_cast<void*>(static_cast<uintptr_t>(CTRL_CLOSE_EVENT));
    return rutina == nullptr ? nullptr : CreateRemoteThread(tubos_->asa, nullptr, 0, rutina, que, 0, nullptr);
}

void proceso::termina() const {
    TerminateProcess(tubos_->asa, 0);
}

resultado proceso::espera() {
    for (std::thread* hilo : {&tubos_->escribe_entrada, &tubos_->lee_salida, &tubos_->lee_errores}) {
        if (hilo->joinable()) {
            hilo->join();
        }
    }
    resultado r;
    constexpr DWORD paciencia_ms = 60000;
    DWORD codigo = 0;
    EXPECT_EQ(WaitForSingleObject(tubos_->asa, paciencia_ms), WAIT_OBJECT_0) << "the process does not end";
    GetExitCodeProcess(tubos_->asa, &codigo);
    r.codigo = static_cast<int>(codigo);
    r.salida = tubos_->salida;
    r.errores = tubos_->errores;
    return r;
}

pantalla::pantalla(const proceso& de) {
    FreeConsole();
    const bool unida = espera_a_que(30000, [&] { return AttachConsole(de.pid()) != FALSE; });
    EXPECT_TRUE(unida) << "error " << GetLastError();
    SetConsoleCtrlHandler(nullptr, TRUE);
    asa_ = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                       OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(asa_, INVALID_HANDLE_VALUE) << "error " << GetLastError();
}

pantalla::~pantalla() {
    CloseHandle(asa_);
    FreeConsole();
    SetConsoleCtrlHandler(nullptr, FALSE);
}

std::string pantalla::texto() const {
    CONSOLE_SCREEN_BUFFER_INFO como{};
    EXPECT_TRUE(GetConsoleScreenBufferInfo(asa_, &como));
    std::string todo;
    for (SHORT y = 0; y <= como.dwCursorPosition.Y; ++y) {
        std::wstring linea(static_cast<size_t>(como.dwSize.X), L' ');
        DWORD leidas = 0;
        ReadConsoleOutputCharacterW(asa_, linea.data(), static_cast<DWORD>(linea.size()), COORD{0, y},
                                    &leidas);
        linea.resize(leidas);
        todo += u8(linea.substr(0, linea.find_last_not_of(L' ') + 1)) + "\n";
    }
    return todo;
}

namespace {

void i_con_el_proceso(const char* que_se_hace, HANDLE asa) {
    using funcion = LONG(NTAPI*)(HANDLE);
    const auto hace = reinterpret_cast<funcion>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll"), que_se_hace)));
    hace(asa);
}

}  // namespace

maquina_lenta::maquina_lenta(const proceso& de) : asa_(OpenProcess(PROCESS_SUSPEND_RESUME, FALSE, de.pid())) {
    EXPECT_NE(asa_, nullptr) << "error " << GetLastError();
    frena_ = std::thread([this] {
        // By how long the turn really was: on a machine with much to do this thread gets its own turn late.
        constexpr int veces_mas_lenta = 50;
        std::chrono::milliseconds turno(1);
        while (!acaba_) {
            i_con_el_proceso("NtSuspendProcess", asa_);
            std::this_thread::sleep_for(turno * veces_mas_lenta);
            const auto antes = std::chrono::steady_clock::now();
            i_con_el_proceso("NtResumeProcess", asa_);
            Sleep(1);
            turno = std::chrono::ceil<std::chrono::milliseconds>(std::chrono::steady_clock::now() - antes);
        }
    });
}

maquina_lenta::~maquina_lenta() {
    acaba_ = true;
    frena_.join();
    CloseHandle(asa_);
}

otro_programa::otro_programa(const std::string& fichero)
    : fichero_(fichero), proceso_(este_programa(), {"--hold", fichero, "120000"}) {
    EXPECT_TRUE(espera_a_que(30000, [&] { return !se_puede_abrir(fichero); }));
    pon_solo_lectura(fichero);
}

otro_programa::~otro_programa() {
    suelta();
}

void otro_programa::espera_un_intento() const {
    EXPECT_TRUE(espera_a_que(30000, [&] { return !es_solo_lectura(fichero_); }));
}

void otro_programa::suelta() const {
    proceso_.termina();
}

resultado lumodir(const std::vector<std::string>& argumentos, const entorno& donde) {
    std::vector<std::string> todos = {"--lang", "en"};
    todos.insert(todos.end(), argumentos.begin(), argumentos.end());
    const resultado r = proceso(ruta_de_lumodir(), todos, donde).espera();
    // Whatever a test is about, an answer in JSON is what the schema says.
    const auto fin = std::find(argumentos.begin(), argumentos.end(), "--");
    const bool en_json = std::find(argumentos.begin(), fin, "--json") != fin;
    if (en_json && std::find(argumentos.begin(), fin, "--help") == fin) {
        EXPECT_EQ(contra_el_esquema(orden_de(argumentos), r.salida), "") << r.salida;
    }
    return r;
}

std::vector<std::string> ordenes() {
    std::istringstream ayuda(lumodir({"--help"}).salida);
    std::vector<std::string> nombres;
    for (std::string linea; std::getline(ayuda, linea) && linea != "Options of every command";) {
        if (linea.size() > 14 && linea.substr(0, 2) == "  " && linea[2] != ' ' && linea[2] != '0') {
            nombres.push_back(linea.substr(2, linea.find("  ", 3) - 2));
        }
    }
    return nombres;
}

std::vector<std::string> palabras(const std::string& linea) {
    std::vector<std::string> todas;
    bool dentro = false, abierta = false;
    for (const char c : linea) {
        if (c == '"') {
            dentro = !dentro;
            if (dentro && !abierta) {
                todas.emplace_back();
                abierta = true;
            }
        } else if (c == ' ' && !dentro) {
            abierta = false;
        } else {
            if (!abierta) {
                todas.emplace_back();
                abierta = true;
            }
            todas.back() += c;
        }
    }
    return todas;
}

std::string lee_fichero(const std::string& fichero) {
    std::ifstream entrada(std::filesystem::path(w(fichero)), std::ios::binary);
    std::ostringstream texto;
    texto << entrada.rdbuf();
    std::string todo = texto.str();
    for (size_t i = 0; (i = todo.find('\r', i)) != todo.npos;) {
        if (i + 1 == todo.size() || todo[i + 1] == '\n') {
            todo.erase(i, 1);
        } else {
            ++i;
        }
    }
    EXPECT_FALSE(todo.empty()) << fichero;
    return todo;
}

bool espera_a_que(unsigned long plazo_ms, const std::function<bool()>& cierto) {
    const ULONGLONG fin = GetTickCount64() + plazo_ms;
    while (!cierto()) {
        if (GetTickCount64() > fin) {
            return false;
        }
        Sleep(20);
    }
    return true;
}

directorio_de_prueba::directorio_de_prueba() {
    static int numero = 0;
    wchar_t temporal[MAX_PATH];
    GetTempPathW(MAX_PATH, temporal);
    std::wstring ruta;
    do {
        ruta =
            temporal + (L"cli_" + std::to_wstring(GetCurrentProcessId()) + L"_" + std::to_wstring(++numero));
    } while (!CreateDirectoryW(ruta.c_str(), nullptr));
    wchar_t largo[MAX_PATH];
    GetLongPathNameW(ruta.c_str(), largo, MAX_PATH);
    ruta_ = u8(largo);
}

directorio_de_prueba::~directorio_de_prueba() {
    // What shows the console of a program stands in its directory too, and ends a moment after it.
    EXPECT_TRUE(espera_a_que(30000, [&] {
        i_borra_todo(i_largo(ruta_));
        return !existe(ruta_);
    })) << ruta_;
}

std::string directorio_de_prueba::pon(std::string texto) const {
    for (size_t i = 0; (i = texto.find("$D", i)) != texto.npos; i += ruta_.size()) {
        texto.replace(i, 2, ruta_);
    }
    return texto;
}

void directorio_de_prueba::crea_directorio(const std::string& relativa) const {
    for (size_t i = 0; i != relativa.npos;) {
        i = relativa.find('\\', i + 1);
        CreateDirectoryW(i_largo(bajo(relativa.substr(0, i))).c_str(), nullptr);
    }
    EXPECT_TRUE(existe(bajo(relativa))) << relativa;
}

void directorio_de_prueba::crea_fichero(const std::string& relativa, const std::string& contenido) const {
    const size_t barra = relativa.rfind('\\');
    if (barra != relativa.npos) {
        crea_directorio(relativa.substr(0, barra));
    }
    HANDLE asa =
        CreateFileW(i_largo(bajo(relativa)).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(asa, INVALID_HANDLE_VALUE) << relativa;
    DWORD bytes = 0;
    WriteFile(asa, contenido.data(), static_cast<DWORD>(contenido.size()), &bytes, nullptr);
    CloseHandle(asa);
}

bool existe(const std::string& ruta) {
    return GetFileAttributesW(i_largo(ruta).c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool se_puede_abrir(const std::string& ruta) {
    constexpr DWORD todo = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    HANDLE asa = CreateFileW(i_largo(ruta).c_str(), GENERIC_READ, todo, nullptr, OPEN_EXISTING, 0, nullptr);
    if (asa == INVALID_HANDLE_VALUE) {
        return false;
    }
    CloseHandle(asa);
    return true;
}

bool es_solo_lectura(const std::string& ruta) {
    const DWORD atributos = GetFileAttributesW(i_largo(ruta).c_str());
    return atributos != INVALID_FILE_ATTRIBUTES && (atributos & FILE_ATTRIBUTE_READONLY) != 0;
}

void pon_solo_lectura(const std::string& ruta) {
    EXPECT_TRUE(SetFileAttributesW(i_largo(ruta).c_str(), FILE_ATTRIBUTE_READONLY)) << ruta;
}

void comprueba(const fila& f, const directorio_de_prueba& d) {
    std::vector<std::string> argumentos;
    std::string linea = "lumodir";
    bool en_json = false, despues_de_guiones = false;
    for (const std::string& a : f.argumentos) {
        argumentos.push_back(d.pon(a));
        linea += " " + argumentos.back();
        en_json = en_json || (a == "--json" && !despues_de_guiones);
        despues_de_guiones = despues_de_guiones || a == "--";
    }
    const resultado r =
        lumodir(argumentos, {.entrada = d.pon(f.entrada), .variables = {}, .directorio = d.ruta()});
    std::string esperada = d.pon(f.salida);
    if (en_json) {
        // A path in JSON has its backslashes doubled.
        esperada = f.salida;
        std::string doble = d.ruta();
        for (size_t i = 0; (i = doble.find('\\', i)) != doble.npos; i += 2) {
            doble.insert(i, 1, '\\');
        }
        for (size_t i = 0; (i = esperada.find("$D", i)) != esperada.npos; i += doble.size()) {
            esperada.replace(i, 2, doble);
        }
    }
    EXPECT_EQ(r.codigo, f.codigo) << linea << "\n" << r.salida << r.errores;
    EXPECT_EQ(en_json ? json_compacto(r.salida) : r.salida, esperada) << linea;
    EXPECT_EQ(r.errores, d.pon(f.errores)) << linea;
}

}  // namespace cli
