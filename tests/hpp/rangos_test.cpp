// What C++20 adds: the lists are ranges. Built as C++20, unlike the rest. And what the headers leave behind: no macro of
// theirs for a host that has defined none. (NOMINMAX is libstdc++'s own where that is the library.)
#include "lumodir.hpp"
#if defined(WIN32_LEAN_AND_MEAN) || defined(min) || defined(max)
#error "the headers impose macros on their host"
#endif

#include <ranges>

#include "hpp/apoyo.hpp"

namespace {

static_assert(std::ranges::random_access_range<lumodir::lista>);
static_assert(std::ranges::random_access_range<lumodir::ordenada_a>);
static_assert(std::ranges::random_access_range<lumodir::lista_ficheros>);
static_assert(std::ranges::random_access_range<lumodir::arbol>);
static_assert(std::ranges::random_access_range<lumodir::arbol::value_type>);
static_assert(std::ranges::random_access_range<lumodir::fichsdir::ficheros_t>);
static_assert(std::ranges::random_access_range<lumodir::fichsdir::ordenados>);
static_assert(std::ranges::random_access_range<lumodir::info::tabla>);

static_assert(std::ranges::input_range<lumodir::recorrido>);
static_assert(std::ranges::input_range<lumodir::dirwin::enumerador>);

class rangos : public hpp::prueba {};

TEST_F(rangos, una_lista_entra_en_una_vista) {
    lumodir::lista l(arr_CreaCADENA_u(0));
    for (const wchar_t* texto : {L"uno", L"dos", L"cuatro"}) {
        arr_AppendCADENA_u(l.get(), texto);
    }
    std::vector<std::size_t> largos;
    for (std::size_t largo : l | std::views::transform(&std::wstring_view::size) | std::views::drop(1)) {
        largos.push_back(largo);
    }
    EXPECT_EQ(largos, (std::vector<std::size_t>{3, 6}));
    EXPECT_EQ(*std::ranges::find(l, L"cuatro"), L"cuatro");
    EXPECT_EQ(l.end() - l.begin(), 3);
    EXPECT_EQ(l.begin()[2], L"cuatro");
    EXPECT_EQ(*(l.end() - 2), L"dos");
    auto i = 1 + l.begin();
    i += 1;
    EXPECT_EQ(*i--, L"cuatro");
    EXPECT_EQ(*--i, L"uno");
    EXPECT_TRUE(i < l.end() && l.end() > i && i <= l.begin() && i >= l.begin());
    std::wstring al_reves;
    for (std::wstring_view texto : l | std::views::reverse) {
        al_reves += texto.front();
    }
    EXPECT_EQ(al_reves, L"cdu");
    EXPECT_EQ(std::ranges::count_if(l, [](std::wstring_view texto) { return texto.size() == 3; }), 2);
}

}  // namespace
