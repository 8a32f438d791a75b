#include "bailuxhost/options.hpp"

namespace Qud {

constinit thread_local bool RuntimeOptions::strict_singularity_checking = true;
constinit thread_local bool RuntimeOptions::zero_over_zero_is_zero = false;

} // namespace Qud
