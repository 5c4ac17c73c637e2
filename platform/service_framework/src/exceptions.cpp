#include <cppmicroservices/IllegalStateException.h>
#include <cppmicroservices/ServiceException.h>
#include <cppmicroservices/SharedLibraryException.h>

#include <utility>

// The destructors are defined out of line, so that each exception type has one type_info object and can be
// caught across shared libraries.
namespace cppmicroservices {

ServiceException::ServiceException(const std::string& message, const Type& type)
    : std::runtime_error(message), type_(type)
{}

ServiceException::ServiceException(const ServiceException&) noexcept = default;
ServiceException& ServiceException::operator=(const ServiceException&) noexcept = default;
ServiceException::~ServiceException() = default;

IllegalStateException::IllegalStateException(const std::string& what) : std::runtime_error(what) {}
IllegalStateException::IllegalStateException(const IllegalStateException&) noexcept = default;
IllegalStateException::~IllegalStateException() = default;

SharedLibraryException::SharedLibraryException(std::error_code code, const std::string& what, Bundle origin)
    : std::system_error(code, what), origin_(std::move(origin))
{}

SharedLibraryException::SharedLibraryException(const SharedLibraryException&) = default;
SharedLibraryException::~SharedLibraryException() = default;

}  // namespace cppmicroservices
