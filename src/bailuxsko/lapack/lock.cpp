#include "bailuxsko/lapack/lock.hpp"

namespace lapack {

Mutex g_MKL_mutex;

} // namespace lapack
