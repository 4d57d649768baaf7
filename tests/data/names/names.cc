// Functions with names of every kind that C++20 has. symbols.txt holds what g++ -std=c++20 makes of
// them, all of this file and some of the standard library, each with the text of c++filt.
#include <algorithm>
#include <array>
#include <chrono>
#include <concepts>
#include <coroutine>
#include <deque>
#include <exception>
#include <functional>
#include <initializer_list>
#include <iostream>
#include <iterator>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <queue>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <variant>
#include <vector>

namespace app {
inline namespace v2 {
struct Node { int value = 0; };
enum class Colour { red, green };
template <class T> struct Box { T value{}; Box() = default; Box(T v) : value(v) {} ~Box() {}
    template <class U> Box(U u, int) : value(static_cast<T>(u)) {}
    template <class U> explicit operator Box<U>() const { return Box<U>(); }
    operator bool() const { return true; }
    template <class U> operator U*() const { return nullptr; }
    T* operator->() { return &value; }
    T& operator*() & { return value; }
    const T& operator*() const& { return value; }
    T&& operator*() && { return static_cast<T&&>(value); }
    T& operator[](int) { return value; }
    template <class U> bool operator<(const Box<U>&) const { return true; }
    template <class U> bool operator>(const Box<U>&) const { return true; }
    template <class U> bool operator<<(const Box<U>&) const { return true; }
    template <class U> bool operator>>(const Box<U>&) const { return true; }
    template <class U> bool operator,(const Box<U>&) const { return true; }
    template <class... A> int operator()(A&&...) const volatile { return sizeof...(A); }
    auto operator<=>(const Box&) const { return std::strong_ordering::equal; }
    bool operator==(const Box&) const { return true; }
    friend bool operator&&(const Box&, const Node&) { return true; }
    void* operator new(std::size_t n) { return ::operator new(n); }
    void operator delete(void* p) { ::operator delete(p); }
    struct Inner { struct Deep { T t; template <class V> V get(V v) const noexcept { return v; } }; Inner(const Inner&) {} Inner() {} };
    class iterator { public: Node operator++(int) { return {}; } iterator& operator++() { return *this; } };
    static int count_;
    static int count() { static int n = [] { return 3; }(); return n + count_; }
    int value_() const { return 1; }
};
template <class T> int Box<T>::count_ = 0;
template <class T, int N> int (&arrayOf(T (&a)[N], int (&b)[N]))[N] { return b; }
template <class T> auto pointerTo(T (*f)(T, const char*)) -> T (*)(T, const char*) { return f; }
int (*plainPointer(int))(char) { return nullptr; }
void (&plainReference(char* const* const&, volatile int*))() ; 
void nothing() {}
void (&plainReference(char* const* const&, volatile int*))() { return nothing; }
int take(int&& a, Node&& b, const Node&& c) { return a + b.value + c.value; }
int array(int (*a)[3], const char (&b)[6], Node (&&c)[2], int const (*const d)[2][3]) { return a && b && c && d; }
int members(int Node::*a, int (Node::*b)(int) const, void (Node::*c)() &&, void (Node::*d)() noexcept, int (Box<int>::*e)(Node) volatile) { return !a + !b + !c + !d + !e; }
int pointers(void (*a)(), void (**b)(int, Node*), void (*(*c)(int))(char), int (*const* d)(), void (&e)(Node), void (*f)() noexcept, void (*g)(int, ...)) { return !a + !b + !c + !d + !f + !g + (&e != nullptr); }
int wide(wchar_t, char8_t, char16_t, char32_t, bool, signed char, unsigned char, short, unsigned short, long, unsigned long, long long, unsigned long long, __int128, unsigned __int128, float, double, long double, std::nullptr_t) { return 0; }
int text(const std::string&, std::string_view, std::wstring, std::u16string&&, const std::vector<std::string>&) { return 0; }
int containers(std::map<std::string, std::vector<Node>>, std::unordered_map<Node*, std::set<int>>*, std::unique_ptr<Node>, std::shared_ptr<const Node>, std::queue<int>, std::priority_queue<int, std::vector<int>, std::greater<int>>, std::multimap<int, Colour, std::greater<>>&) { return 0; }
int streams(std::ostream&, std::istream&, std::ostringstream&, std::iostream*, std::istreambuf_iterator<char>) { return 0; }
int others(std::function<void(int, Node)>, std::tuple<>, std::tuple<int, Node, std::pair<int, char>>, std::variant<int, std::monostate>, std::optional<Node>, std::array<Node, 3>, std::chrono::milliseconds, std::chrono::system_clock::time_point, std::initializer_list<int>) { return 0; }
int vararg(const char*, ...) { return 0; }
int __reserved(int) { return 0; }
int trailing_(int) { return 0; }
int double__underscore(Node) { return 0; }
namespace with__underscores { int inside(Node) { return 1; } struct S { int get() const { return 1; } S() {} }; }
int operator""_km(unsigned long long v) { return static_cast<int>(v); }
int operator""_name(const char*, std::size_t) { return 1; }
template <char... C> int operator""_bits() { return sizeof...(C); }
template <class T> T identity(T t) { return t; }
template <class T, class U> auto add(T t, U u) -> decltype(t + u) { return t + u; }
template <class... T> int pack(T... t) { return sizeof...(t); }
template <class... T> std::tuple<T&&...> forwardAll(T&&... t) { return {std::forward<T>(t)...}; }
template <template <class> class C, class T> int templateTemplate(C<T>) { return 1; }
template <int N> int number() { return N; }
template <unsigned long N, bool B, char C, Colour K> int values() { return N; }
template <auto V> int anything() { return 1; }
template <int (*F)(int)> int function() { return F(1); }
template <int Node::*M> int memberOf(Node n) { return n.*M; }
template <Node* P> int object() { return P ? 1 : 0; }
Node global;
static Node hidden() { return {}; }
template <class T> std::enable_if_t<std::is_integral<T>::value && (sizeof(T) > 2), T> enabled(T t) { return t; }
template <class T> typename std::enable_if<(sizeof(T) < 9), T>::type enabledLess(T t) { return t; }
template <class T> auto decl(T t) -> decltype(t.value) { return t.value; }
template <class T> auto calls(T t) -> decltype(t->get(1), t) { return t; }
template <class T> auto declare(T t) -> std::vector<decltype(std::declval<T>() + t * 2)> { return {}; }
template <class T> concept Number = std::is_arithmetic_v<T>;
template <Number T> T constrained(T t) { return t; }
template <class T> requires Number<T> T required(T t) { return t; }
auto abbreviated(Number auto a, auto b) { return a + b; }
template <class T> int sized(int (*)[sizeof(T) + 1]) { return 0; }
template <class... T> auto fold(T... t) -> decltype((t + ...)) { return (t + ...); }
struct Local { int run() const { auto f = [this](int a, Node) { auto g = [&](auto b) { return b; }; return g(a); }; return f(1, {}) + inner(); }
    int inner() const { struct Here { int go(Node n) { return n.value + [](const std::vector<Node>& v) { return static_cast<int>(v.size()); }({}); } static int stay() { return 1; } }; return Here().go({}) + Here::stay(); }
    int defaulted(int a = [] { return 1; }(), int b = [] { return 2; }()) { return a + b; }
    int member = [] { return 3; }();
    operator int() const { struct X { int f() { return 1; } }; return X().f(); }
    operator Node() const { return [] { return Node(); }(); }
    operator std::vector<Node>*() const { return nullptr; }
    operator const char*() const { return nullptr; }
    using Fn = void (*)(Node);
    operator Fn() const { return nullptr; }
    int volatileMember() volatile { return 1; }
    int both() const volatile& { return 1; }
    int rvalue() && { return 1; }
    virtual ~Local() {}
};
struct Derived : virtual Local, Box<Node> { Derived(int) {} using Box<Node>::Box; ~Derived() override {} };
template <class F> int apply(F f) { return f(1); }
template <class T> int lambdas(T t) { auto a = [t](T u) { return static_cast<int>(sizeof(u)) + static_cast<int>(sizeof(t)); }; auto b = [](auto... x) { return static_cast<int>(sizeof...(x)); }; auto c = [](auto&& x) mutable { return static_cast<int>(sizeof(x)); }; return a(t) + b(1, 'c', Node()) + c(Node()) + apply([](int q) { return q; }) + apply([&]<class Q>(Q q) { return static_cast<int>(q); }); }
struct Task { struct promise_type { Task get_return_object() { return {}; } std::suspend_never initial_suspend() { return {}; } std::suspend_never final_suspend() noexcept { return {}; } void return_void() {} void unhandled_exception() {} }; };
Task coroutine(int n, Node node) { co_await std::suspend_never{}; if (n > node.value) co_return; }
template <class T> Task coroutineOf(T t) { if (t) co_await std::suspend_never{}; }
typedef float vec4 __attribute__((vector_size(16)));
int vectors(vec4, vec4*) { return 1; }
struct { int unnamed(int a) { return a; } } unnamedStruct;
enum { anonymousValue };
template <class T> struct Long_name_of_a_class_template_for_testing { template <class U, class V> int member_function_with_a_long_name(std::map<T, std::vector<U>>, V) { return 1; } int plain() { return [](T, std::vector<T>) { return 1; }(T(), {}); } };
namespace { struct Secret { int tell(Node) { return 1; } template <class T> T any(T t) { return t; } }; int secret(Secret s) { return s.tell({}); } template <class T> int secretOf(T) { return sizeof(T); } }
template <class T, class = std::enable_if_t<std::is_class_v<T>>> int defaultArgument(T) { return 1; }
template <class T> struct Traits { using type = T; static constexpr bool value = true; template <class U> struct rebind { using other = Traits<U>; }; };
template <class T> typename Traits<T>::template rebind<int>::other dependent(T) { return {}; }
template <class T> int deep(Traits<Box<Traits<Box<Traits<Box<T>>>>>>) { return 1; }
int deepest(Traits<Box<Traits<Box<Traits<Box<Traits<Box<std::vector<Node>>>>>>>>>, int) { return 1; }
int tenPieces(std::map<Node*, Box<Traits<Node>>>, const std::map<Box<Node>, std::map<Traits<Box<Node>>, Box<Traits<Colour>>>>&, std::array<Node, 4>) { return 1; }
extern "C" int plain_c_function(int a) { return a; }
} // namespace v2
} // namespace app
namespace fmt_like { template <class C, class It> struct context {}; template <class T, class C> struct formatter { template <class Ctx> auto format(const T&, Ctx& c) const -> decltype(c) { return c; } };
template <class OutputIt, class Char, class T, std::enable_if_t<std::is_integral<T>::value, int> = 0> OutputIt write(OutputIt o, T) { return o; } }
using namespace app;
template int fmt_like::write<int, char, unsigned>(int, unsigned);
int use()
{
    Box<int> b; Box<Node> c(Node{}); Box<std::string> s; Box<std::vector<Node>> v;
    Box<int> d(2.5, 1); Box<double> e(1, 2);
    (void)static_cast<Box<char>>(b); (void)static_cast<bool>(b); int* ip = b; const Node* np = c; (void)ip; (void)np;
    (void)b.operator->(); (void)*b; (void)*std::as_const(b); (void)*std::move(b); b[1];
    (void)(b < e); (void)(b > e); (void)(b << c); (void)(b >> c); b.operator,(c); b(1, 'c', Node()); b(); (void)(b <=> b); (void)(b == b); (void)(b && Node()); delete new Box<Node>;
    Box<Node>::Inner inner; Box<Node>::Inner copy(inner); (void)copy; Box<int>::Inner::Deep deepOne{}; deepOne.get(1); deepOne.get(Node()); Box<int>::iterator it; ++it; it++; (void)Box<int>::count(); (void)Box<std::map<int, Node>>::count(); b.value_(); c.value_();
    int a3[3] = {}; Node n3[3]; arrayOf(n3, a3); char c3[3]; arrayOf(c3, a3); pointerTo<int>(nullptr); pointerTo<Node>(nullptr);
    plainPointer(1); identity(1); identity(Node()); identity(std::string()); identity(std::vector<Node>()); identity<int&>(a3[0]); identity<const char*>(""); identity<void (*)(Node)>(nullptr); identity(std::map<std::string, Node>());
    add(1, 2.0); add(1L, 'c'); pack(); pack(1); pack(1, Node(), "x"); pack(std::vector<Node>(), std::string()); Node n; forwardAll(1, n, std::string()); templateTemplate(Box<Node>()); number<3>(); number<-3>(); values<7, true, 'c', Colour::green>(); anything<3u>(); anything<'c'>(); anything<&global>(); anything<nullptr>(); anything<&take>(); anything<&Node::value>();
    memberOf<&Node::value>({}); object<&global>(); hidden(); enabled(1); enabledLess('c'); decl(Node()); declare(1); constrained(1); constrained(2.0); required(1); abbreviated(1, 2.0); sized<int>(nullptr); fold(1, 2, 3L);
    Local l; l.run(); l.defaulted(); (void)static_cast<int>(l); (void)static_cast<Node>(l); (void)static_cast<std::vector<Node>*>(l); (void)static_cast<const char*>(l); (void)static_cast<Local::Fn>(l); l.volatileMember(); l.both(); Local().rvalue(); Derived der(1); Derived der2(Node{}); 
    lambdas(1); lambdas(Node()); lambdas(std::string()); coroutine(1, {}); coroutineOf(1); coroutineOf('c'); vectors(vec4{}, nullptr); unnamedStruct.unnamed(1); identity(anonymousValue); identity(unnamedStruct);
    Long_name_of_a_class_template_for_testing<int> L; L.member_function_with_a_long_name(std::map<int, std::vector<Node>>(), Node()); L.member_function_with_a_long_name(std::map<int, std::vector<char>>(), std::vector<Node>()); L.plain(); Long_name_of_a_class_template_for_testing<Node> M; M.plain();
    Secret secretOne; secretOne.any(1); secretOne.any(Node()); secret(secretOne); secretOf(secretOne); secretOf(Node()); defaultArgument(Node()); dependent(1); dependent(Node()); deep<int>({}); deep<Node>({});
    1_km; "x"_name; 0101_bits;
    fmt_like::formatter<Node, char> f; int i = 1; f.format({}, i); fmt_like::context<char, Node> ctx; f.format({}, ctx);
    apply([](auto x) { return x; }); auto generic = [](auto x, auto... y) { return [=](auto z) { return x + z + static_cast<int>(sizeof...(y)); }(1); }; generic(1); generic(1, 2.0, Node());
    std::vector<Node> nodes; std::sort(nodes.begin(), nodes.end(), [](const Node& x, const Node& y) { return x.value < y.value; });
    identity(nodes.begin()); identity([](int) { return 1; }); identity([](Node, std::vector<Node>) { return 1; }); std::function<int(Node)> fn = [](Node q) { return q.value; }; fn({});
    identity(static_cast<unsigned __int128>(1)); identity(std::make_pair(nodes.begin(), 1));
    try { throw Node(); } catch (const Node&) {}
    return 0;
}
int main() { auto f = []() { return 1; }; struct InMain { int go() const { return [] { return 2; }(); } int operator()(int a) const { return a; } }; return f() + InMain().go() + InMain()(1) + use() - use(); }
