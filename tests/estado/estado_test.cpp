// Sequences of 20 to 50 calls on a real directory, each call judged against the model: what it answers, what it tells
// its host, the whole tree and what lies outside afterwards, blocks and handles. A few hundred of them here, after those
// that are kept because they failed once (semillas); `tools/largo estado` runs them for as long as one likes.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "apoyo/recursos.hpp"
#include "estado/con_fallos.hpp"
#include "estado/pareja.hpp"

using namespace apoyo;
using namespace estado;

namespace {

unsigned long long del_entorno(const char* nombre, unsigned long long si_no) {
    const char* valor = std::getenv(nombre);
    return valor == nullptr ? si_no : std::strtoull(valor, nullptr, 10);
}

std::vector<std::pair<std::string, std::string>> semillas_guardadas() {
    std::vector<std::pair<std::string, std::string>> todas;
    for (const auto& e : std::filesystem::directory_iterator(L"" LUMODIR_RAIZ "/tests/estado/semillas")) {
        std::ifstream f(e.path(), std::ios::binary);
        todas.emplace_back(e.path().filename().string(),
                           std::string(std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>()));
    }
    std::sort(todas.begin(), todas.end());
    return todas;
}

// A failing sequence, shortened, as a seed to be kept.
std::string contado(campo& c, const desenlace& d, const std::string& de_donde) {
    const desenlace corta = acorta(c, d);
    return de_donde + ": library and model do not agree" + corta.fallo + "\n# shortest sequence:\n" +
           a_texto(corta.pasos);
}

TEST(estado, las_secuencias_que_fallaron_alguna_vez) {
    const auto todas = semillas_guardadas();
    campo c;
    if (!c.por_que_no().empty()) {
        GTEST_SKIP() << c.por_que_no();
    }
    for (const auto& [nombre, texto] : todas) {
        const desenlace d = corre(c, de_texto(texto));
        EXPECT_EQ(d.fallo, "") << contado(c, d, nombre);
    }
}

// After so many the system has most of what it keeps for itself; later it takes this much more at most. Each
// sequence alone leaves no handle at all.
constexpr unsigned long long calienta = 30;
constexpr std::size_t manijas_de_mas = 2;
constexpr std::size_t bytes_de_mas = 4'000'000;

// Runs many, by number, as long or as often as the environment says; `una` answers what is wrong with one, and adds to
// the number of calls.
template <class Una>
void corre_muchas(unsigned long long sin_mas, Una una) {
    campo c;
    if (!c.por_que_no().empty()) {
        GTEST_SKIP() << c.por_que_no();
    }
    const unsigned long long segundos = del_entorno("LUMODIR_ESTADO_SEGUNDOS", 0);
    const unsigned long long primera = del_entorno("LUMODIR_ESTADO_SEMILLA", 1);
    const unsigned long long cuantas = del_entorno("LUMODIR_ESTADO_CUANTAS", segundos == 0 ? sin_mas : ~0ull);
    const unsigned long long max_fallos = del_entorno("LUMODIR_ESTADO_FALLOS", 3);
    const ULONGLONG empezo = ::GetTickCount64();
    unsigned long long hechas = 0;
    unsigned long long pasos = 0;
    unsigned long long fallos = 0;
    std::size_t manijas = 0;
    memoria al_principio = {};
    while (hechas < cuantas && fallos < max_fallos &&
           (segundos == 0 || ::GetTickCount64() - empezo < segundos * 1000)) {
        const std::string fallo = una(c, primera + hechas, pasos);
        if (++hechas == calienta) {
            manijas = manijas_del_proceso();
            al_principio = memoria_del_proceso();
        }
        if (!fallo.empty()) {
            ++fallos;
            ADD_FAILURE() << fallo;
        }
    }
    std::cout << "sequences: " << hechas << ", calls: " << pasos << ", disagreements: " << fallos << ", "
              << (::GetTickCount64() - empezo) / 1000 << " s\n";
    if (hechas >= calienta) {
        const memoria al_final = memoria_del_proceso();
        std::cout << "from sequence " << calienta << " on: handles " << manijas << " to "
                  << manijas_del_proceso() << ", memory " << al_principio.bytes / 1024 << " to "
                  << al_final.bytes / 1024 << " KiB, peak " << al_final.pico_bytes / 1024 << " KiB\n";
        EXPECT_LE(manijas_del_proceso(), manijas + manijas_de_mas);
        EXPECT_LE(al_final.bytes, al_principio.bytes + bytes_de_mas);
    }
}

std::string una_al_azar(campo& c, asunto de_que, unsigned long long semilla, unsigned long long& pasos) {
    const desenlace d = corre_al_azar(c, de_que, semilla);
    pasos += d.pasos.size();
    return d.fallo.empty() ? "" : contado(c, d, "seed " + std::to_string(semilla));
}

TEST(estado, secuencias_al_azar) {
    corre_muchas(300, [](campo& c, unsigned long long semilla, unsigned long long& pasos) {
        return una_al_azar(c, asunto::ficheros, semilla, pasos);
    });
}

TEST(estado, secuencias_al_azar_en_el_registro) {
    corre_muchas(200, [](campo& c, unsigned long long semilla, unsigned long long& pasos) {
        return una_al_azar(c, asunto::registro, semilla, pasos);
    });
    acaba_el_registro();
}

TEST(estado, secuencias_al_azar_con_fallos) {
    unsigned long long golpes = 0;
    corre_muchas(200, [&](campo& c, unsigned long long semilla, unsigned long long& pasos) {
        const desenlace d = corre_con_fallos(c, semilla, golpes);
        pasos += d.pasos.size();
        return d.fallo.empty() ? std::string()
                               : "seed " + std::to_string(semilla) + d.fallo + "\n" + a_texto(d.pasos);
    });
    std::cout << "calls of the system made to fail: " << golpes << "\n";
}

TEST(estado, dos_a_la_vez_en_hilos) {
    corre_muchas(300, [](campo& c, unsigned long long semilla, unsigned long long&) {
        return corre_pareja(c, juntos::hilos, semilla);
    });
}

TEST(estado, dos_a_la_vez_en_procesos) {
    corre_muchas(40, [](campo& c, unsigned long long semilla, unsigned long long&) {
        return corre_pareja(c, juntos::procesos, semilla);
    });
}

}  // namespace
