// Numbers that depend on a seed alone, the same on every machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace estado {

class azar {
public:
    explicit azar(std::uint64_t semilla) : s_(semilla) {}

    std::uint64_t siguiente() {
        std::uint64_t z = s_ += 0x9E3779B97F4A7C15u;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }
    std::size_t menor_que(std::size_t n) { return static_cast<std::size_t>(siguiente() % n); }
    bool uno_de_cada(std::size_t n) { return menor_que(n) == 0; }
    template <class T>
    const T& elige(const std::vector<T>& v) {
        return v[menor_que(v.size())];
    }

private:
    std::uint64_t s_;
};

}  // namespace estado
