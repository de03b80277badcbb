// A page of memory before and behind which nothing can be touched: who reads past the end of a text that ends there, or
// before one that begins there, dies of it, in whatever build.
#pragma once

#include <algorithm>

#include "apoyo/apoyo.hpp"
#ifdef _WIN32
#include "companions/sistema.hpp"
#else
#include <sys/mman.h>
#endif

namespace apoyo {

class pagina_ultima {
public:
    static constexpr std::size_t bytes = 4096;

#ifdef _WIN32
    pagina_ultima() : memoria_(::VirtualAlloc(nullptr, 3 * bytes, MEM_RESERVE, PAGE_NOACCESS)) {
        EXPECT_NE(::VirtualAlloc(principio<char>(), bytes, MEM_COMMIT, PAGE_READWRITE), nullptr);
    }
    ~pagina_ultima() {
        ::VirtualFree(memoria_, 0, MEM_RELEASE);
    }
#else
    pagina_ultima() : memoria_(mmap(nullptr, 3 * bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
        EXPECT_EQ(mprotect(principio<char>(), bytes, PROT_READ | PROT_WRITE), 0);
    }
    ~pagina_ultima() {
        munmap(memoria_, 3 * bytes);
    }
#endif
    pagina_ultima(const pagina_ultima&) = delete;
    pagina_ultima& operator=(const pagina_ultima&) = delete;

    template <class C>
    C* principio() const {
        return reinterpret_cast<C*>(static_cast<char*>(memoria_) + bytes);
    }
    template <class C>
    C* fin() const {
        return reinterpret_cast<C*>(static_cast<char*>(memoria_) + 2 * bytes);
    }
    // The text, as the last one of the page; so many units that are not its own stand behind it.
    template <class C>
    interno::vista<C> pon(interno::vista<C> texto, std::size_t detras = 0) {
        C* const aqui = fin<C>() - detras - texto.size();
        std::copy(texto.begin(), texto.end(), aqui);
        return {aqui, texto.size()};
    }
    // As the first one.
    template <class C>
    interno::vista<C> pon_al_principio(interno::vista<C> texto) {
        std::copy(texto.begin(), texto.end(), principio<C>());
        return {principio<C>(), texto.size()};
    }

private:
    void* memoria_;
};

}  // namespace apoyo
