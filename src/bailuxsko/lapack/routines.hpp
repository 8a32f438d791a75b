#pragma once

#include "bailuxsko/lapack/fortran.hpp"
#include "bailuxsko/lapack/pivoting.hpp"
#include "bailuxsko/lapack/provider.hpp"
#include "bailuxsko/lapack/small_systems.hpp"
#include "efiutl/api.hpp"

namespace lapack {

/// The provider as the drivers see it: every service and LAPACK routine is called through this table, so that a test
/// can put its own in a routine's place, watch the calls and answer with an info that no input brings about.
struct Routines {
    decltype(&MKL_Set_Num_Threads) set_num_threads = &MKL_Set_Num_Threads;
    decltype(&MKL_Free_Buffers) free_buffers = &MKL_Free_Buffers;
    decltype(&MKL_malloc) malloc = &MKL_malloc;
    decltype(&MKL_free) free = &MKL_free;

    decltype(&fortran::dgesv_) dgesv = &dgesv_of_any_size;
    decltype(&fortran::zgesv_) zgesv = &fortran::zgesv_;
    decltype(&fortran::dgelsy_) dgelsy = &fortran::dgelsy_;
    decltype(&fortran::zgelsy_) zgelsy = &fortran::zgelsy_;
    decltype(&fortran::dgetrf_) dgetrf = &dgetrf_of_any_size;
    decltype(&fortran::zgetrf_) zgetrf = &fortran::zgetrf_;
    decltype(&fortran::dgetri_) dgetri = &fortran::dgetri_;
    decltype(&fortran::zgetri_) zgetri = &fortran::zgetri_;
    decltype(&fortran::dsytrf_) dsytrf = &fortran::dsytrf_;
    decltype(&fortran::dsytri_) dsytri = &fortran::dsytri_;
    decltype(&fortran::dgesvd_) dgesvd = &fortran::dgesvd_;
    decltype(&fortran::zgesvd_) zgesvd = &fortran::zgesvd_;
    decltype(&fortran::dgeqrf_) dgeqrf = &fortran::dgeqrf_;
    decltype(&fortran::zgeqrf_) zgeqrf = &fortran::zgeqrf_;
    decltype(&fortran::dorgqr_) dorgqr = &fortran::dorgqr_;
    decltype(&fortran::zungqr_) zungqr = &fortran::zungqr_;
    decltype(&fortran::dgeqpf_) dgeqpf = &dgeqpf_of_provider;
    decltype(&fortran::zgeqpf_) zgeqpf = &zgeqpf_of_provider;
    decltype(&fortran::dpotrf_) dpotrf = &fortran::dpotrf_;
    decltype(&fortran::zpotrf_) zpotrf = &fortran::zpotrf_;
    decltype(&fortran::dpstrf_) dpstrf = &fortran::dpstrf_;
    decltype(&fortran::zpstrf_) zpstrf = &fortran::zpstrf_;
    decltype(&fortran::dsyev_) dsyev = &fortran::dsyev_;
    decltype(&fortran::zheev_) zheev = &fortran::zheev_;
    decltype(&fortran::dgeev_) dgeev = &fortran::dgeev_;
    decltype(&fortran::zgeev_) zgeev = &fortran::zgeev_;
    decltype(&fortran::dggev_) dggev = &fortran::dggev_;
    decltype(&fortran::zggev_) zggev = &fortran::zggev_;
};

/// The table. Only tests write to it, while no other thread is inside a driver.
BAILUXSKO_API Routines& routines() noexcept;

} // namespace lapack
