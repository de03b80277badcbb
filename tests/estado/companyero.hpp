// A child process that does something whenever it is told to, and a piece of memory that both see.
#pragma once

#include "apoyo/hijo.hpp"

namespace estado {

inline texto_w i_nombre_comun(const char* papel, DWORD padre, const char* que) {
    return w("lumodir_" + std::string(papel) + "_" + std::to_string(padre) + "_" + que);
}

// The child's part: `haz(mesa)` whenever it is told to, until its parent is gone.
template <class Mesa, class Haz>
int acompanya(const char* papel, Haz haz) {
    const DWORD pid = static_cast<DWORD>(std::stoul(u8(apoyo::hijo_dato())));
    const HANDLE padre = ::OpenProcess(SYNCHRONIZE, FALSE, pid);
    const HANDLE memoria =
        ::OpenFileMappingW(FILE_MAP_ALL_ACCESS, FALSE, i_nombre_comun(papel, pid, "mesa").c_str());
    auto* const mesa = static_cast<Mesa*>(::MapViewOfFile(memoria, FILE_MAP_ALL_ACCESS, 0, 0, 0));
    const HANDLE empieza =
        ::OpenEventW(EVENT_ALL_ACCESS, FALSE, i_nombre_comun(papel, pid, "empieza").c_str());
    const HANDLE hecho = ::OpenEventW(EVENT_ALL_ACCESS, FALSE, i_nombre_comun(papel, pid, "hecho").c_str());
    if (mesa == nullptr || padre == nullptr) {
        return 1;
    }
    apoyo::hijo_listo();
    const HANDLE espera[] = {empieza, padre};
    while (::WaitForMultipleObjects(2, espera, FALSE, INFINITE) == WAIT_OBJECT_0) {
        haz(*mesa);
        ::SetEvent(hecho);
    }
    return 0;
}

// The parent's: the child reads what is on the table when it is told to begin, and leaves its answer there.
template <class Mesa>
class companyero {
public:
    explicit companyero(const char* papel)
        : memoria_(::CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Mesa),
                                        i_nombre_comun(papel, pid_, "mesa").c_str())),
          mesa_(static_cast<Mesa*>(::MapViewOfFile(memoria_, FILE_MAP_ALL_ACCESS, 0, 0, 0))),
          empieza_(::CreateEventW(nullptr, FALSE, FALSE, i_nombre_comun(papel, pid_, "empieza").c_str())),
          hecho_(::CreateEventW(nullptr, FALSE, FALSE, i_nombre_comun(papel, pid_, "hecho").c_str())),
          hijo_(papel, w(std::to_string(pid_))) {
        EXPECT_TRUE(hijo_.espera_listo());
    }
    ~companyero() {
        ::UnmapViewOfFile(mesa_);
        ::CloseHandle(memoria_);
        ::CloseHandle(empieza_);
        ::CloseHandle(hecho_);
    }
    companyero(const companyero&) = delete;
    companyero& operator=(const companyero&) = delete;

    Mesa& mesa() { return *mesa_; }
    void empieza() { ::SetEvent(empieza_); }
    bool acaba() { return ::WaitForSingleObject(hecho_, apoyo::paciencia_hijo_ms) == WAIT_OBJECT_0; }

private:
    const DWORD pid_ = ::GetCurrentProcessId();
    const HANDLE memoria_;
    Mesa* const mesa_;
    const HANDLE empieza_;
    const HANDLE hecho_;
    const apoyo::proceso_hijo hijo_;
};

}  // namespace estado
