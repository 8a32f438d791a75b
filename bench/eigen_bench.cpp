// Eigenvalues and eigenvectors by LAPACK beside the bare routine on buffers that are ready, with the copies that it
// needs in and out: parts interleaved and parted, packed pairs of vectors unpacked. Only ours puts its results in
// order.
#include "bailuxsko/eigenvalues.hpp"
#include "bailuxsko/lapack/fortran.hpp"
#include "bench/compare.hpp"
#include "bench/inputs.hpp"
#include "efiutl/thread_count.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <numeric>
#include <string>
#include <vector>

namespace {

using Complex = lapack::MKL_Complex16;
using bench::Complexes;
using bench::Numbers;

namespace fortran = lapack::fortran;
namespace IntelMKL = Efi::IntelMKL;

constexpr double tolerance = 1e-7;

enum class Wanted { values, vectors };

/// A square matrix as a plain column for the peer and as a host value for us; real where `im` is empty.
struct Input {
    Input(std::size_t n, Numbers real, Numbers imaginary = {})
        : re(std::move(real)), im(std::move(imaginary)), host(bench::host_matrix(n, n, re, im))
    {
    }
    void interleave(Complexes& z) const { bench::interleave(re, im, z); }

    Numbers re;
    Numbers im;
    Qud::Handle host;
};

Input general(std::size_t n, std::uint64_t seed)
{
    return {n, bench::random_numbers(n * n, seed)};
}

Input complex_general(std::size_t n, std::uint64_t seed)
{
    return {n, bench::random_numbers(n * n, seed), bench::random_numbers(n * n, seed + 1)};
}

Input symmetric(std::size_t n)
{
    Numbers A = bench::random_numbers(n * n, 1);
    bench::mirror(A, n);
    return {n, std::move(A)};
}

Input hermitian(std::size_t n)
{
    Numbers re = bench::random_numbers(n * n, 1);
    Numbers im = bench::random_numbers(n * n, 2);
    bench::mirror(re, n);
    bench::mirror(im, n, -1.0);
    for (std::size_t i = 0; i < n; ++i)
        im[i * (n + 1)] = 0.0;
    return {n, std::move(re), std::move(im)};
}

/// What a peer finds, in LAPACK's order: eigenvalues, and vectors where they are wanted.
struct Spectrum {
    Spectrum(std::size_t n, Wanted wanted)
        : re(n), im(n), V_re(wanted == Wanted::vectors ? n * n : 0), V_im(V_re.size())
    {
    }

    void part_values(const Complexes& w)
    {
        for (std::size_t k = 0; k < re.size(); ++k) {
            re[k] = w[k].real();
            im[k] = w[k].imag();
        }
    }
    void part_vectors(const Complexes& V)
    {
        for (std::size_t k = 0; k < V_re.size(); ++k) {
            V_re[k] = V[k].real();
            V_im[k] = V[k].imag();
        }
    }
    /// From columns of which two stand for a pair of conjugates.
    void unpack_vectors(const Numbers& V)
    {
        const std::size_t n = re.size();
        for (std::size_t j = 0; j < n && !V_re.empty(); ++j) {
            const bool is_pair = im[j] != 0.0;
            for (std::size_t i = j * n; i < (j + 1) * n; ++i) {
                V_re[i] = V[i];
                V_im[i] = is_pair ? V[i + n] : 0.0;
                if (is_pair) {
                    V_re[i + n] = V[i];
                    V_im[i + n] = -V[i + n];
                }
            }
            j += is_pair ? 1 : 0;
        }
    }

    Numbers re, im, V_re, V_im;
};

/// A result as columns: an eigenvalue is one of one number. Null where there are no imaginary parts.
struct Columns {
    const double* re;
    const double* im;
    std::size_t height;

    double distance(std::size_t k, const Columns& other, std::size_t l) const
    {
        double largest = 0.0;
        for (std::size_t i = 0; i < height; ++i) {
            const double x = im == nullptr ? 0.0 : im[k * height + i];
            largest = std::max({largest, std::fabs(re[k * height + i] - other.re[l * height + i]),
                                std::fabs(x - other.im[l * height + i])});
        }
        return largest;
    }
};

/// Each of our columns stands somewhere among the peer's, which are in LAPACK's order. Rounding may exchange a pair of
/// conjugates: LAPACK's own results depend on where the buffers lie.
bool agree(const Qud::Handle& ours, const Spectrum& peer)
{
    const Qud::MatVal& M = *Qud::matrix_of(ours);
    const std::size_t n = peer.re.size();
    const bool has_vectors = !peer.V_re.empty();
    const Columns found{has_vectors ? peer.V_re.data() : peer.re.data(),
                        has_vectors ? peer.V_im.data() : peer.im.data(), has_vectors ? n : 1};
    const Columns given{M.m_rarr, M.m_iarr, found.height};
    const double largest =
        has_vectors ? 1.0 : std::fabs(*std::max_element(peer.re.begin(), peer.re.end(), [](double a, double b) {
            return std::fabs(a) < std::fabs(b);
        }));
    std::vector<std::size_t> left(n);
    std::iota(left.begin(), left.end(), std::size_t{0});
    for (std::size_t k = 0; k < n; ++k) {
        const auto same = std::find_if(left.begin(), left.end(), [&](std::size_t l) {
            return given.distance(k, found, l) <= tolerance * largest;
        });
        if (same == left.end())
            return false;
        left.erase(same);
    }
    return true;
}

/// One row: our call beside the peer's, which fills its spectrum.
struct Row {
    const char* name;
    const char* routine;
    Wanted wanted;
};

template <class Ours, class Peer>
void compare(const Row& row, std::size_t n, Ours ours, Peer peer)
{
    const std::string routine = std::string(row.routine) + (row.wanted == Wanted::vectors ? ", vectors" : ", values");
    bench::compare({.name = row.name, .n = n, .peer = routine.c_str(), .at_most = bench::at_most_beside_routine(n)},
                   ours, peer, agree);
}

Qud::Handle eigen(const Row& row, const Input& A)
{
    return row.wanted == Wanted::vectors ? IntelMKL::eigenvecs(A.host, nullptr) : IntelMKL::eigenvals(A.host);
}

Qud::Handle generalised(const Row& row, const Input& A, const Input& B)
{
    return row.wanted == Wanted::vectors ? IntelMKL::genvecs(A.host, B.host, nullptr)
                                         : IntelMKL::genvals(A.host, B.host);
}

/// Dimensions, jobs and work as our drivers hand them over.
struct Arguments {
    Arguments(std::size_t size, Wanted wanted)
        : n(static_cast<int>(size)), lwork(16 * n), job(wanted == Wanted::vectors ? 'V' : 'N'),
          ldv(wanted == Wanted::vectors ? n : 1)
    {
    }
    int n;
    int lwork;
    char job;
    int ldv;
    int one = 1;
    int info = 0;
};

void of_symmetric(const Row& row, std::size_t n)
{
    const Input A = symmetric(n);
    Arguments a(n, row.wanted);
    Numbers work(16 * n);
    Numbers copy(n * n);
    Spectrum found(n, row.wanted);
    compare(
        row, n, [&] { return eigen(row, A); },
        [&]() -> const Spectrum& {
            Numbers& V = row.wanted == Wanted::vectors ? found.V_re : copy; // in the place of A
            std::copy(A.re.begin(), A.re.end(), V.begin());
            fortran::dsyev_(&a.job, "U", &a.n, V.data(), &a.n, found.re.data(), work.data(), &a.lwork, &a.info, 1, 1);
            return found;
        });
}

void of_hermitian(const Row& row, std::size_t n)
{
    const Input A = hermitian(n);
    Arguments a(n, row.wanted);
    Complexes work(17 * n); // a row of its blocks is read one element beyond, as one of the matrix is
    Numbers rwork(3 * n);
    Complexes V(n * n + n);
    Spectrum found(n, row.wanted);
    compare(
        row, n, [&] { return eigen(row, A); },
        [&]() -> const Spectrum& {
            A.interleave(V);
            fortran::zheev_(&a.job, "U", &a.n, V.data(), &a.n, found.re.data(), work.data(), &a.lwork, rwork.data(),
                            &a.info, 1, 1);
            found.part_vectors(V);
            return found;
        });
}

void of_general(const Row& row, std::size_t n)
{
    const Input A = general(n, 1);
    Arguments a(n, row.wanted);
    Numbers work(16 * n);
    Numbers copy(n * n);
    Numbers V(n * n);
    Spectrum found(n, row.wanted);
    compare(
        row, n, [&] { return eigen(row, A); },
        [&]() -> const Spectrum& {
            std::copy(A.re.begin(), A.re.end(), copy.begin());
            fortran::dgeev_("N", &a.job, &a.n, copy.data(), &a.n, found.re.data(), found.im.data(), nullptr, &a.one,
                            V.data(), &a.ldv, work.data(), &a.lwork, &a.info, 1, 1);
            found.unpack_vectors(V);
            return found;
        });
}

void of_complex(const Row& row, std::size_t n)
{
    const Input A = complex_general(n, 1);
    Arguments a(n, row.wanted);
    Complexes work(16 * n);
    Numbers rwork(2 * n);
    Complexes copy(n * n + n);
    Complexes w(n);
    Complexes V(n * n);
    Spectrum found(n, row.wanted);
    compare(
        row, n, [&] { return eigen(row, A); },
        [&]() -> const Spectrum& {
            A.interleave(copy);
            fortran::zgeev_("N", &a.job, &a.n, copy.data(), &a.n, w.data(), nullptr, &a.one, V.data(), &a.ldv,
                            work.data(), &a.lwork, rwork.data(), &a.info, 1, 1);
            found.part_values(w);
            found.part_vectors(V);
            return found;
        });
}

void of_pair(const Row& row, std::size_t n)
{
    const Input A = general(n, 1);
    const Input B = general(n, 3);
    Arguments a(n, row.wanted);
    a.lwork = 16 * (a.n + 1);
    Numbers work(16 * (n + 1));
    Numbers copy_A(n * n);
    Numbers copy_B(n * n);
    Numbers beta(n);
    Numbers V(n * n);
    Spectrum found(n, row.wanted);
    compare(
        row, n, [&] { return generalised(row, A, B); },
        [&]() -> const Spectrum& {
            std::copy(A.re.begin(), A.re.end(), copy_A.begin());
            std::copy(B.re.begin(), B.re.end(), copy_B.begin());
            fortran::dggev_("N", &a.job, &a.n, copy_A.data(), &a.n, copy_B.data(), &a.n, found.re.data(),
                            found.im.data(), beta.data(), nullptr, &a.one, V.data(), &a.ldv, work.data(), &a.lwork,
                            &a.info, 1, 1);
            std::transform(found.re.begin(), found.re.end(), beta.begin(), found.re.begin(), std::divides<>());
            std::transform(found.im.begin(), found.im.end(), beta.begin(), found.im.begin(), std::divides<>());
            found.unpack_vectors(V);
            return found;
        });
}

void of_complex_pair(const Row& row, std::size_t n)
{
    const Input A = complex_general(n, 1);
    const Input B = complex_general(n, 3);
    Arguments a(n, row.wanted);
    Complexes work(16 * n);
    Numbers rwork(8 * n);
    Complexes copy_A(n * n + n);
    Complexes copy_B(n * n + n);
    Complexes alpha(n);
    Complexes beta(n);
    Complexes V(n * n);
    Spectrum found(n, row.wanted);
    compare(
        row, n, [&] { return generalised(row, A, B); },
        [&]() -> const Spectrum& {
            A.interleave(copy_A);
            B.interleave(copy_B);
            fortran::zggev_("N", &a.job, &a.n, copy_A.data(), &a.n, copy_B.data(), &a.n, alpha.data(), beta.data(),
                            nullptr, &a.one, V.data(), &a.ldv, work.data(), &a.lwork, rwork.data(), &a.info, 1, 1);
            std::transform(alpha.begin(), alpha.end(), beta.begin(), alpha.begin(), std::divides<>());
            found.part_values(alpha);
            found.part_vectors(V);
            return found;
        });
}

constexpr Wanted values = Wanted::values;
constexpr Wanted vectors = Wanted::vectors;

void of_one_matrix(std::size_t n)
{
    of_symmetric({"eigenvals, symmetric", "dsyev", values}, n);
    of_hermitian({"eigenvals, Hermitian", "zheev", values}, n);
    of_general({"eigenvals", "dgeev", values}, n);
    of_complex({"eigenvals, complex", "zgeev", values}, n);
    of_symmetric({"eigenvecs, symmetric", "dsyev", vectors}, n);
    of_hermitian({"eigenvecs, Hermitian", "zheev", vectors}, n);
    of_general({"eigenvecs", "dgeev", vectors}, n);
    of_complex({"eigenvecs, complex", "zgeev", vectors}, n);
}

void of_two_matrices(std::size_t n)
{
    of_pair({"genvals", "dggev", values}, n);
    of_complex_pair({"genvals, complex", "zggev", values}, n);
    of_pair({"genvecs", "dggev", vectors}, n);
    of_complex_pair({"genvecs, complex", "zggev", vectors}, n);
}

} // namespace

int main()
{
    bench::header("eigenvalues and eigenvectors by LAPACK");
    Efi::MKL_NUM_THREADS = 1;
    for (const std::size_t n : {20, 200, 500}) {
        of_one_matrix(n);
        of_two_matrices(n);
    }
    Efi::MKL_NUM_THREADS = bench::threads_in_use = 2; // but not for two matrices: LAPACK's QZ knows no threads
    for (const std::size_t n : {200, 500})
        of_one_matrix(n);
}
