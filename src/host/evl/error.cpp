#include "bailuxhost/error.hpp"

namespace Evl::Run {

void AppException::Raise(std::string_view message, int index, std::string detail)
{
    throw AppException(std::string(message), index, std::move(detail));
}

} // namespace Evl::Run
