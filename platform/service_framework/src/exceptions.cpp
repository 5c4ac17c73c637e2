#include <cppmicroservices/IllegalStateException.h>
#include <cppmicroservices/ServiceException.h>
#include <cppmicroservices/SharedLibraryException.h>

// The destructors are defined out of line, so that each exception type has one type_info object and can be
// caught across shared libraries.
namespace cppmicroservices {

ServiceException::~ServiceException() = default;
IllegalStateException::~IllegalStateException() = default;
SharedLibraryException::~SharedLibraryException() = default;

}  // namespace cppmicroservices
