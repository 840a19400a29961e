// Prints one table as Markdown: what our numbers take, what GMP and MPFR take for the same work in
// the same run, the ratio of both, and the ratio that we aim at. Needs both libraries. With a word
// as argument it prints only the rows whose name holds that word; without one a second table tells
// how the cost grows with the length.

#include "numbers/elementary.h"
#include "numbers/limbsProduct.h"
#include "numbers/limbsQuotient.h"
#include "numbers/longBase58.h"
#include "numbers/numberTheory.h"

#include <gmp.h>
#include <mpfr.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace huge;

namespace {

/// Where the figure of the peer comes from: measured beside ours, or, for work that neither library
/// does, taken down once on this kind of machine in seconds.
struct Row {
    std::string name;
    std::string size;
    std::function<void()> ours;
    std::function<void()> peer;
    double aim;         // the ratio that we aim at
    double peerSeconds; // where peer is empty
    bool once = false;  // too long to be repeated
};

std::vector<Row> rows;

double secondsOf(const std::function<void()>& work, bool once)
{
    using Clock = std::chrono::steady_clock;
    constexpr double shortest = 0.02; // seconds of one measurement
    const auto timed = [&](int count) {
        const Clock::time_point start = Clock::now();
        for (int i = 0; i < count; ++i)
            work();
        return std::chrono::duration<double>(Clock::now() - start).count();
    };
    if (once)
        return timed(1);
    int count = 1;
    double best = timed(count);
    while (best < shortest) {
        count *= 2;
        best = timed(count);
    }
    best /= count;
    for (int repeat = 0; repeat < 4; ++repeat)
        best = std::min(best, timed(count) / count);
    return best;
}

std::string figure(double seconds)
{
    char text[32];
    if (seconds < 1e-6)
        std::snprintf(text, sizeof text, "%.3g ns", seconds * 1e9);
    else if (seconds < 1e-3)
        std::snprintf(text, sizeof text, "%.3g us", seconds * 1e6);
    else if (seconds < 1)
        std::snprintf(text, sizeof text, "%.3g ms", seconds * 1e3);
    else
        std::snprintf(text, sizeof text, "%.3g s", seconds);
    return text;
}

std::mt19937_64 source(20260728);

std::vector<Limb> randomLimbs(size_t n)
{
    std::vector<Limb> limbs(n);
    for (Limb& limb : limbs)
        limb = source();
    limbs.back() |= Limb(1) << 63;
    return limbs;
}

HugeInteger randomInteger(size_t n)
{
    const std::vector<Limb> limbs = randomLimbs(n);
    HugeInteger x;
    x.fromLimbs_(limbs.data(), n);
    return x;
}

/// A GMP integer that lives as long as the program.
struct Gmp {
    Gmp() { mpz_init(value); }
    explicit Gmp(const HugeInteger& x) : Gmp()
    {
        mpz_import(value, x.effectiveSize(), -1, sizeof(Limb), 0, 0, x.limbs());
    }
    Gmp(const Gmp&) = delete;
    Gmp& operator=(const Gmp&) = delete;
    ~Gmp() { mpz_clear(value); }
    mpz_t value;
};

/// An MPFR number of so many limbs that lives as long as the program.
struct Mpfr {
    explicit Mpfr(size_t limbs) { mpfr_init2(value, mpfr_prec_t(64 * limbs)); }
    Mpfr(const HugeInteger& mantissa, long exponent) : Mpfr(mantissa.effectiveSize())
    {
        const Gmp integer(mantissa);
        mpfr_set_z_2exp(value, integer.value, exponent, MPFR_RNDN);
    }
    Mpfr(const Mpfr&) = delete;
    Mpfr& operator=(const Mpfr&) = delete;
    ~Mpfr() { mpfr_clear(value); }
    mpfr_t value;
};

std::string limbs(size_t n)
{
    return std::to_string(n) + " limbs";
}

void addRow(Row row)
{
    rows.push_back(std::move(row));
}

using Arrays = std::vector<std::vector<Limb>>;

void addLimbRows()
{
    constexpr size_t n = 1024;
    const auto x =
        std::make_shared<Arrays>(Arrays{randomLimbs(n), randomLimbs(n), randomLimbs(n + 1)});
    const auto a = x->at(0).data();
    const auto b = x->at(1).data();
    const auto r = x->at(2).data();
    addRow({"row of a sum", limbs(n), [=] { (void)x, limbsAdd(a, n, b, n, r); },
            [=] { mpn_add_n(r, a, b, n); }, 1.5, 0});
    addRow({"row of a product", limbs(n), [=] { limbsMulLimb(a, n, b[0], r); },
            [=] { mpn_mul_1(r, a, n, b[0]); }, 1.5, 0});
    addRow({"row added to", limbs(n), [=] { limbsAddMulLimb(r, a, n, b[0]); },
            [=] { mpn_addmul_1(r, a, n, b[0]); }, 1.5, 0});
}

void addProducts()
{
    for (const size_t n : {64, 256, 1024, 4096, 10000, 20000}) {
        const auto x =
            std::make_shared<Arrays>(Arrays{randomLimbs(n), randomLimbs(n), randomLimbs(2 * n)});
        const auto a = x->at(0).data();
        const auto b = x->at(1).data();
        const auto r = x->at(2).data();
        addRow({"product", limbs(n), [=] { (void)x, limbsProduct(a, n, b, n, r); },
                [=] { mpn_mul_n(r, a, b, mp_size_t(n)); }, 2.5, 0});
        addRow({"square", limbs(n), [=] { limbsProduct(a, n, a, n, r); },
                [=] { mpn_sqr(r, a, mp_size_t(n)); }, 2.5, 0});
    }
}

void addQuotients()
{
    for (const size_t n : {1024, 2048, 4096, 10000}) {
        const auto x = std::make_shared<Arrays>(
            Arrays{randomLimbs(2 * n), randomLimbs(n), randomLimbs(2 * n), randomLimbs(n + 1)});
        const auto num = x->at(0).data();
        const auto den = x->at(1).data();
        const auto r = x->at(2).data();
        const auto q = x->at(3).data();
        addRow({"quotient of 2 n by n", limbs(n),
                [=] {
                    (void)x;
                    limbsCopy(r, num, 2 * n);
                    limbsQuotient(r, 2 * n, den, n, q);
                },
                [=] { mpn_tdiv_qr(q, r, 0, num, mp_size_t(2 * n), den, mp_size_t(n)); }, 4, 0});
    }
}

void addRoots()
{
    for (const size_t n : {1000, 10000, 20000}) {
        const HugeInteger x = randomInteger(n);
        const auto peer = std::make_shared<Gmp>(x);
        const auto root = std::make_shared<Gmp>();
        addRow({"square root of an integer", limbs(n), [=] { (void)x.sqrt(); },
                [=] { mpz_sqrt(root->value, peer->value); }, 5, 0});
        const HugeFloat f(x);
        const auto peerFloat = std::make_shared<Mpfr>(x, 0);
        const auto rootFloat = std::make_shared<Mpfr>(n);
        addRow({"square root of a float", limbs(n), [=] { (void)f.sqrt(); },
                [=] { mpfr_sqrt(rootFloat->value, peerFloat->value, MPFR_RNDN); }, 5, 0});
    }
}

void addDivisors()
{
    for (const size_t n : {64, 1024, 2048, 4096, 10000}) {
        const HugeInteger a = randomInteger(n);
        const HugeInteger b = randomInteger(n).setBit_(0, true);
        HugeInteger m = b;
        while (!gcd(a, m).isOne())
            m = m + 2;
        const auto x = std::make_shared<Gmp>(a);
        const auto y = std::make_shared<Gmp>(m);
        const auto r = std::make_shared<Gmp>();
        addRow({"gcd", limbs(n), [=] { (void)gcd(a, m); },
                [=] { mpz_gcd(r->value, x->value, y->value); }, 5, 0});
        addRow({"modular inverse", limbs(n), [=] { (void)invMod(a, m); },
                [=] { mpz_invert(r->value, x->value, y->value); }, 5, 0});
    }
}

void addTexts()
{
    for (const size_t n : {1000, 5000, 10000, 20000}) {
        const HugeInteger x = randomInteger(n);
        const auto peer = std::make_shared<Gmp>(x);
        const auto text = std::make_shared<std::string>(x.toString());
        const auto buffer = std::make_shared<std::string>(text->size() + 2, ' ');
        addRow({"decimal print", limbs(n), [=] { (void)x.toString(); },
                [=] { mpz_get_str(buffer->data(), 10, peer->value); }, 5, 0});
        addRow({"decimal read", limbs(n),
                [=] {
                    HugeInteger r;
                    r.fromText_(*text);
                },
                [=] { mpz_set_str(peer->value, text->c_str(), 10); }, 5, 0});
    }
    constexpr size_t bytes = 1'000'000;
    const auto data = std::make_shared<std::vector<uint8_t>>(bytes);
    for (uint8_t& byte : *data)
        byte = uint8_t(source());
    addRow({"Base58", "1 MB", [=] { (void)longBase58(data->data(), data->data() + data->size()); },
            nullptr, 10, 0.32, true});
}

void addPowers()
{
    const auto r = std::make_shared<Gmp>();
    for (const int n : {12500, 25000, 50000})
        addRow({"factorial", std::to_string(n), [=] { (void)factorial(HugeInteger(n)); },
                [=] { mpz_fac_ui(r->value, unsigned(n)); }, 5, 0});
    for (const int n : {100000, 800000})
        addRow({"3 to a power", std::to_string(n), [=] { (void)HugeInteger(3).pow(n); },
                [=] { mpz_ui_pow_ui(r->value, 3, unsigned(n)); }, 5, 0});
    for (const size_t n : {16, 64, 256}) {
        const HugeInteger a = randomInteger(n);
        const HugeInteger e = randomInteger(n);
        const HugeInteger m = randomInteger(n).setBit_(0, true);
        const auto x = std::make_shared<Gmp>(a);
        const auto y = std::make_shared<Gmp>(e);
        const auto z = std::make_shared<Gmp>(m);
        addRow({"powMod", limbs(n), [=] { (void)powMod(a, e, m); },
                [=] { mpz_powm(r->value, x->value, y->value, z->value); }, 3, 0, n > 64});
    }
}

/// Products of two primes of equal size, the ends of their ranges; each is the next prime above.
void addFactors()
{
    struct Case {
        size_t bits;
        double peer;
        double aim;
    };
    for (const Case& c :
         {Case{80, 1.2e-3, 20}, Case{100, 3.9e-3, 20}, Case{128, 21e-3, 20}, Case{200, 60, 1}}) {
        const auto primeFrom = [](HugeInteger p) {
            while (!isPrime(p))
                p = p + 2;
            return p;
        };
        const HugeInteger start = HugeInteger(2).pow(int64_t(c.bits / 2 - 2)) * 3 + 1;
        const HugeInteger other = HugeInteger(2).pow(int64_t(c.bits / 2 - 3)) * 7 + 1;
        const HugeInteger n = primeFrom(start) * primeFrom(other);
        addRow({"factors", std::to_string(c.bits) + " bits", [=] { (void)primeFactors(n); },
                nullptr, c.aim, c.peer, c.bits > 128});
    }
}

using Function = HugeFloat (*)(const HugeFloat&);
using PeerFunction = int (*)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t);

void addFunctions()
{
    struct Named {
        const char* name;
        Function ours;
        PeerFunction peer;
        int32_t exponent;
    };
    const Named functions[] = {{"exp", exp, mpfr_exp, 0},
                               {"ln", ln, mpfr_log, 3},
                               {"sin", sin, mpfr_sin, 0},
                               {"cos", cos, mpfr_cos, 0},
                               {"atan", atan, mpfr_atan, 0}};
    for (const Named& f : functions) {
        for (const size_t n : {64, 256, 1000}) {
            const HugeInteger mantissa = randomInteger(n);
            const HugeFloat x = HugeFloat(mantissa).shiftExponent(64 * int64_t(n) - 1 - f.exponent);
            const auto peer = std::make_shared<Mpfr>(mantissa, 1 + f.exponent - 64 * long(n));
            const auto r = std::make_shared<Mpfr>(n);
            const Function ours = f.ours;
            const PeerFunction theirs = f.peer;
            addRow({f.name, limbs(n), [=] { (void)ours(x); },
                    [=] { theirs(r->value, peer->value, MPFR_RNDN); }, 5, 0});
        }
    }
}

void addConstants()
{
    for (const size_t n : {256, 1000, 10000}) {
        const auto r = std::make_shared<Mpfr>(n);
        // Each kept constant is worked out at its first use: one measurement each.
        addRow({"pi, first use", limbs(n), [=] { (void)constPi(n); },
                [=] {
                    mpfr_free_cache();
                    mpfr_const_pi(r->value, MPFR_RNDN);
                },
                5, 0, true});
        addRow({"e, first use", limbs(n), [=] { (void)constE(n); },
                [=] {
                    Mpfr one(n);
                    mpfr_set_ui(one.value, 1, MPFR_RNDN);
                    mpfr_exp(r->value, one.value, MPFR_RNDN);
                },
                5, 0, true});
    }
}

void addFloats()
{
    for (const size_t n : {16, 64, 256}) {
        const HugeInteger a = randomInteger(n);
        const HugeInteger b = randomInteger(n);
        const HugeFloat x(a);
        const HugeFloat y(b);
        const auto p = std::make_shared<Mpfr>(a, 0);
        const auto q = std::make_shared<Mpfr>(b, 0);
        const auto r = std::make_shared<Mpfr>(n);
        addRow({"product of floats", limbs(n), [=] { (void)(x * y); },
                [=] { mpfr_mul(r->value, p->value, q->value, MPFR_RNDZ); }, 2, 0});
    }
}

std::string processor()
{
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("model name"))
            return line.substr(line.find(':') + 2);
    }
    return "an unknown processor";
}

void printRow(const Row& row)
{
    const double ours = secondsOf(row.ours, row.once);
    const double peer = row.peer ? secondsOf(row.peer, row.once) : row.peerSeconds;
    const double ratio = ours / peer;
    std::printf("| %s | %s | %s | %s%s | %.2f | %g | %s |\n", row.name.c_str(), row.size.c_str(),
                figure(ours).c_str(), figure(peer).c_str(), row.peer ? "" : " (kept)", ratio,
                row.aim, ratio <= row.aim ? "" : "missed");
    std::fflush(stdout);
}

/// How the cost of our own work grows with the length.
void printGrowth()
{
    struct Work {
        const char* name;
        std::function<std::function<void()>(size_t)> of;
    };
    const Work works[] = {
        {"product",
         [](size_t n) -> std::function<void()> {
             return [a = randomInteger(n), b = randomInteger(n)] { (void)(a * b); };
         }},
        {"quotient of 2 n by n",
         [](size_t n) -> std::function<void()> {
             return [a = randomInteger(2 * n), b = randomInteger(n)] { (void)(a / b); };
         }},
        {"square root of 2 n",
         [](size_t n) -> std::function<void()> {
             return [a = randomInteger(2 * n)] { (void)a.sqrt(); };
         }},
        {"gcd",
         [](size_t n) -> std::function<void()> {
             return [a = randomInteger(n), b = randomInteger(n)] { (void)gcd(a, b); };
         }},
        {"modular inverse",
         [](size_t n) -> std::function<void()> {
             const HugeInteger m = HugeInteger(2).pow(int64_t(64 * n) - 1);
             return [a = randomInteger(n).setBit_(0, true) % m, m] { (void)invMod(a, m); };
         }},
        {"decimal print",
         [](size_t n) -> std::function<void()> {
             return [a = randomInteger(n)] { (void)a.toString(); };
         }},
        {"decimal read",
         [](size_t n) -> std::function<void()> {
             return [text = randomInteger(n).toString()] {
                 HugeInteger r;
                 r.fromText_(text);
             };
         }},
        {"exp",
         [](size_t n) -> std::function<void()> {
             const HugeFloat x = HugeFloat(randomInteger(n)).shiftExponent(64 * int64_t(n) - 1);
             return [x] { (void)exp(x); };
         }},
    };
    constexpr size_t n = 2500;
    std::printf("\n| operation | n = %zu limbs | 2 n | 4 n | 2 n to n | 4 n to 2 n |\n", n);
    std::printf("| --- | --- | --- | --- | --- | --- |\n");
    for (const Work& work : works) {
        double seconds[3];
        for (size_t i = 0; i < 3; ++i)
            seconds[i] = secondsOf(work.of(n << i), false);
        std::printf("| %s | %s | %s | %s | %.2f | %.2f |\n", work.name, figure(seconds[0]).c_str(),
                    figure(seconds[1]).c_str(), figure(seconds[2]).c_str(), seconds[1] / seconds[0],
                    seconds[2] / seconds[1]);
        std::fflush(stdout);
    }
}

} // namespace

int main(int argc, char** argv)
{
    const std::string wanted = argc > 1 ? argv[1] : "";
    addLimbRows();
    addProducts();
    addQuotients();
    addRoots();
    addDivisors();
    addTexts();
    addPowers();
    addFactors();
    addConstants(); // before the functions, which use them
    addFunctions();
    addFloats();
    char date[16];
    const std::time_t now = std::time(nullptr);
    std::strftime(date, sizeof date, "%Y-%m-%d", std::gmtime(&now));
    std::printf("%s, %s, GMP %s, MPFR %s\n\n", date, processor().c_str(), gmp_version,
                mpfr_get_version());
    std::printf("| operation | size | ours | peer | ratio | aim | |\n");
    std::printf("| --- | --- | --- | --- | --- | --- | --- |\n");
    for (const Row& row : rows) {
        if (row.name.find(wanted) != std::string::npos)
            printRow(row);
    }
    if (wanted.empty())
        printGrowth();
}
