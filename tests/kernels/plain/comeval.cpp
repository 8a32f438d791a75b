#include "tests/kernels/plain/comeval.hpp"

#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"
#include "tests/kernels/plain/modulus.hpp"
#include "tests/kernels/plain/quotient.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace plain {
namespace {

constexpr double eps = 2.220446049250313e-16;

double modulus(aComplex z)
{
    return plain::modulus(z.m_re, z.m_im);
}

double sum_of_parts(aComplex z)
{
    return std::fabs(z.m_re) + std::fabs(z.m_im);
}

aComplex square_root(double re, double im)
{
    const double s = std::sqrt(0.5 * (modulus({.m_re = re, .m_im = im}) + std::fabs(re)));
    aComplex root{};
    if (re >= 0.0)
        root.m_re = s;
    if (re <= 0.0)
        root.m_im = im < 0.0 ? -s : s;
    if (re < 0.0)
        root.m_re = 0.5 * (im / root.m_im);
    if (re > 0.0)
        root.m_im = 0.5 * (im / root.m_re);
    return root;
}

/// The matrix with rows and columns counted from 1, as in the literature.
struct Run {
    EfiCallContext* m_ctx;
    aMatrix* m_A;
    std::size_t m_n;
    double* m_w_re;
    double* m_w_im;
    std::size_t m_low = 1;
    std::size_t m_high = 1;

    double re(std::size_t i, std::size_t j) const { return Efi::at(m_A, i - 1, j - 1); }
    double im(std::size_t i, std::size_t j) const
    {
        const aMatrix* const A = m_A; // 0.0 throughout while there is no array
        return Efi::at_i(A, i - 1, j - 1);
    }
    aComplex get(std::size_t i, std::size_t j) const { return {.m_re = re(i, j), .m_im = im(i, j)}; }
    void put(std::size_t i, std::size_t j, double re, double im) const
    {
        Efi::at(m_A, i - 1, j - 1) = re;
        Efi::store_i(m_ctx, m_A, i - 1, j - 1, im);
    }
    void swap(std::size_t i, std::size_t j, std::size_t p, std::size_t q) const
    {
        const aComplex x = get(i, j);
        const aComplex y = get(p, q);
        put(i, j, y.m_re, y.m_im);
        put(p, q, x.m_re, x.m_im);
    }
    bool is_zero(std::size_t i, std::size_t j) const { return re(i, j) == 0.0 && im(i, j) == 0.0; }

    void exchange(std::size_t j, std::size_t m, std::size_t k, std::size_t l) const;
    bool isolate_row();
    bool isolate_column();
    bool balance_once(std::vector<double>& scale) const;
    void balance();
    void reflect(std::size_t m, std::vector<double>& u_re, std::vector<double>& u_im) const;
    void reduce() const;
    void make_subdiagonal_real() const;
    aComplex shift(std::size_t en, int its) const;
    void step(std::size_t l, std::size_t en) const;
    void iterate() const;
};

void Run::exchange(std::size_t j, std::size_t m, std::size_t k, std::size_t l) const
{
    if (j == m)
        return;
    for (std::size_t i = 1; i <= l; ++i)
        swap(i, j, i, m);
    for (std::size_t i = k; i <= m_n; ++i)
        swap(j, i, m, i);
}

bool Run::isolate_row()
{
    for (std::size_t j = m_high; j >= 1; --j) {
        bool alone = true;
        for (std::size_t i = 1; i <= m_high; ++i)
            alone = alone && (i == j || is_zero(j, i));
        if (!alone)
            continue;
        exchange(j, m_high, m_low, m_high);
        if (m_high == 1)
            return false;
        --m_high;
        return true;
    }
    return false;
}

bool Run::isolate_column()
{
    for (std::size_t j = m_low; j <= m_high; ++j) {
        bool alone = true;
        for (std::size_t i = m_low; i <= m_high; ++i)
            alone = alone && (i == j || is_zero(i, j));
        if (!alone)
            continue;
        exchange(j, m_low, m_low, m_high);
        ++m_low;
        return true;
    }
    return false;
}

bool Run::balance_once(std::vector<double>& scale) const
{
    bool changed = false;
    for (std::size_t i = m_low; i <= m_high; ++i) {
        double c = 0.0;
        double r = 0.0;
        for (std::size_t j = m_low; j <= m_high; ++j)
            if (j != i) {
                c += sum_of_parts(get(j, i));
                r += sum_of_parts(get(i, j));
            }
        if (c == 0.0 || r == 0.0)
            continue;
        const double s = c + r;
        const double c0 = c;
        double f = 1.0;
        if (std::isinf(c) || std::isinf(r))
            continue;
        if (c < r * 0.5)
            for (const double g = r * 0.5; c < g; c *= 4.0)
                f *= 2.0;
        else
            for (const double g = r * 2.0; c >= g; c *= 0.25)
                f *= 0.5;
        if (!(c0 * f + r / f < 0.95 * s))
            continue;
        const double g = 1.0 / f;
        scale[i] *= f;
        changed = true;
        for (std::size_t j = m_low; j <= m_n; ++j)
            put(i, j, re(i, j) * g, im(i, j) * g);
        for (std::size_t j = 1; j <= m_high; ++j)
            put(j, i, re(j, i) * f, im(j, i) * f);
    }
    return changed;
}

void Run::balance()
{
    m_high = m_n;
    while (isolate_row()) {
    }
    if (m_high == 1)
        return;
    while (isolate_column()) {
    }
    std::vector<double> scale(m_n + 1, 1.0);
    while (balance_once(scale)) {
    }
}

void Run::reflect(std::size_t m, std::vector<double>& u_re, std::vector<double>& u_im) const
{
    double scale = 0.0;
    for (std::size_t i = m; i <= m_high; ++i)
        scale += sum_of_parts(get(i, m - 1));
    if (scale == 0.0)
        return;
    double h = 0.0;
    for (std::size_t i = m_high; i >= m; --i) {
        u_re[i] = re(i, m - 1) / scale;
        u_im[i] = im(i, m - 1) / scale;
        h += u_re[i] * u_re[i] + u_im[i] * u_im[i];
    }
    double g = std::sqrt(h);
    const double f = modulus({.m_re = u_re[m], .m_im = u_im[m]});
    if (f == 0.0) {
        u_re[m] = g;
        put(m, m - 1, scale, im(m, m - 1));
    } else {
        h = h + f * g;
        g = g / f;
        u_re[m] = (1.0 + g) * u_re[m];
        u_im[m] = (1.0 + g) * u_im[m];
    }
    for (std::size_t j = m; j <= m_n; ++j) {
        double f_re = 0.0;
        double f_im = 0.0;
        for (std::size_t i = m_high; i >= m; --i) {
            f_re = f_re + u_re[i] * re(i, j) + u_im[i] * im(i, j);
            f_im = f_im + u_re[i] * im(i, j) - u_im[i] * re(i, j);
        }
        f_re /= h;
        f_im /= h;
        for (std::size_t i = m; i <= m_high; ++i)
            put(i, j, re(i, j) - f_re * u_re[i] + f_im * u_im[i], im(i, j) - f_re * u_im[i] - f_im * u_re[i]);
    }
    for (std::size_t i = 1; i <= m_high; ++i) {
        double f_re = 0.0;
        double f_im = 0.0;
        for (std::size_t j = m_high; j >= m; --j) {
            f_re = f_re + u_re[j] * re(i, j) - u_im[j] * im(i, j);
            f_im = f_im + u_re[j] * im(i, j) + u_im[j] * re(i, j);
        }
        f_re /= h;
        f_im /= h;
        for (std::size_t j = m; j <= m_high; ++j)
            put(i, j, re(i, j) - f_re * u_re[j] - f_im * u_im[j], im(i, j) + f_re * u_im[j] - f_im * u_re[j]);
    }
    u_re[m] = scale * u_re[m];
    u_im[m] = scale * u_im[m];
    put(m, m - 1, -g * re(m, m - 1), -g * im(m, m - 1));
}

void Run::reduce() const
{
    std::vector<double> u_re(m_high + 1);
    std::vector<double> u_im(m_high + 1);
    for (std::size_t m = m_low + 1; m + 1 <= m_high; ++m)
        reflect(m, u_re, u_im);
}

void Run::make_subdiagonal_real() const
{
    for (std::size_t i = m_low + 1; i <= m_high; ++i) {
        if (im(i, i - 1) == 0.0)
            continue;
        const double norm = modulus(get(i, i - 1));
        const double y_re = re(i, i - 1) / norm;
        const double y_im = im(i, i - 1) / norm;
        put(i, i - 1, norm, 0.0);
        for (std::size_t j = i; j <= m_high; ++j)
            put(i, j, y_re * re(i, j) + y_im * im(i, j), y_re * im(i, j) - y_im * re(i, j));
        for (std::size_t j = m_low; j <= std::min(i + 1, m_high); ++j)
            put(j, i, y_re * re(j, i) - y_im * im(j, i), y_re * im(j, i) + y_im * re(j, i));
    }
}

aComplex Run::shift(std::size_t en, int its) const
{
    if (its == 10 || its == 20)
        return {.m_re = std::fabs(re(en, en - 1)) + (en > 2 ? std::fabs(re(en - 1, en - 2)) : 0.0), .m_im = 0.0};
    const aComplex s = get(en, en);
    const aComplex x{.m_re = re(en - 1, en) * re(en, en - 1), .m_im = im(en - 1, en) * re(en, en - 1)};
    if (x.m_re == 0.0 && x.m_im == 0.0)
        return s;
    const aComplex y{.m_re = (re(en - 1, en - 1) - s.m_re) / 2.0, .m_im = (im(en - 1, en - 1) - s.m_im) / 2.0};
    aComplex z = square_root(y.m_re * y.m_re - y.m_im * y.m_im + x.m_re, 2.0 * y.m_re * y.m_im + x.m_im);
    if (y.m_re * z.m_re + y.m_im * z.m_im < 0.0)
        z = {.m_re = -z.m_re, .m_im = -z.m_im};
    const aComplex q = quotient(x, {.m_re = y.m_re + z.m_re, .m_im = y.m_im + z.m_im});
    return {.m_re = s.m_re - q.m_re, .m_im = s.m_im - q.m_im};
}

/// One step of the iteration on rows and columns l to en, the shift having been subtracted.
void Run::step(std::size_t l, std::size_t en) const
{
    double* const x_re = m_w_re - 1;
    double* const x_im = m_w_im - 1;
    for (std::size_t i = l + 1; i <= en; ++i) {
        const double sub = re(i, i - 1);
        put(i, i - 1, 0.0, im(i, i - 1));
        const aComplex d = get(i - 1, i - 1);
        const double norm = std::sqrt(d.m_re * d.m_re + d.m_im * d.m_im + sub * sub);
        x_re[i - 1] = d.m_re / norm;
        x_im[i - 1] = d.m_im / norm;
        put(i - 1, i - 1, norm, 0.0);
        put(i, i - 1, 0.0, sub / norm);
        for (std::size_t j = i; j <= en; ++j) {
            const aComplex y = get(i - 1, j);
            const aComplex z = get(i, j);
            const double sine = im(i, i - 1);
            put(i - 1, j, x_re[i - 1] * y.m_re + x_im[i - 1] * y.m_im + sine * z.m_re,
                x_re[i - 1] * y.m_im - x_im[i - 1] * y.m_re + sine * z.m_im);
            put(i, j, x_re[i - 1] * z.m_re - x_im[i - 1] * z.m_im - sine * y.m_re,
                x_re[i - 1] * z.m_im + x_im[i - 1] * z.m_re - sine * y.m_im);
        }
    }
    const bool is_complex = im(en, en) != 0.0;
    aComplex last{};
    if (is_complex) {
        const double norm = modulus(get(en, en));
        last = {.m_re = re(en, en) / norm, .m_im = im(en, en) / norm};
        put(en, en, norm, 0.0);
    }
    for (std::size_t j = l + 1; j <= en; ++j) {
        const double sine = im(j, j - 1);
        for (std::size_t i = l; i <= j; ++i) {
            const double y_re = re(i, j - 1);
            double y_im = 0.0;
            const aComplex z = get(i, j);
            if (i != j) {
                y_im = im(i, j - 1);
                put(i, j - 1, re(i, j - 1), x_re[j - 1] * y_im + x_im[j - 1] * y_re + sine * z.m_im);
            }
            put(i, j - 1, x_re[j - 1] * y_re - x_im[j - 1] * y_im + sine * z.m_re, im(i, j - 1));
            put(i, j, x_re[j - 1] * z.m_re + x_im[j - 1] * z.m_im - sine * y_re,
                x_re[j - 1] * z.m_im - x_im[j - 1] * z.m_re - sine * y_im);
        }
    }
    if (!is_complex)
        return;
    for (std::size_t i = l; i <= en; ++i) {
        const aComplex y = get(i, en);
        put(i, en, last.m_re * y.m_re - last.m_im * y.m_im, last.m_re * y.m_im + last.m_im * y.m_re);
    }
}

void Run::iterate() const
{
    for (std::size_t i = 1; i <= m_n; ++i)
        if (i < m_low || i > m_high) {
            m_w_re[i - 1] = re(i, i);
            m_w_im[i - 1] = im(i, i);
        }
    aComplex t{};
    for (std::size_t en = m_high; en >= m_low; --en) {
        for (int its = 0;; ++its) {
            std::size_t l = en;
            while (l > m_low && !(eps * (sum_of_parts(get(l - 1, l - 1)) + std::fabs(re(l, l)) + std::fabs(im(l, l))) >=
                                  std::fabs(re(l, l - 1))))
                --l;
            if (l == en)
                break;
            if (its > 30)
                Efi::Throw(msg::too_many_iterations, -1);
            const aComplex s = shift(en, its);
            for (std::size_t i = m_low; i <= en; ++i)
                put(i, i, re(i, i) - s.m_re, im(i, i) - s.m_im);
            t = {.m_re = t.m_re + s.m_re, .m_im = t.m_im + s.m_im};
            step(l, en);
        }
        m_w_re[en - 1] = re(en, en) + t.m_re;
        m_w_im[en - 1] = im(en, en) + t.m_im;
    }
}

} // namespace

void comeval(EfiCallContext* ctx, aMatrix* A, double* w_re, double* w_im)
{
    Run run{.m_ctx = ctx, .m_A = A, .m_n = A->m_rows, .m_w_re = w_re, .m_w_im = w_im};
    run.balance();
    run.reduce();
    run.make_subdiagonal_real();
    run.iterate();
}

} // namespace plain
