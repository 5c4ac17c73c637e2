#include <cppmicroservices/Constants.h>

namespace cppmicroservices::Constants {

const std::string SYSTEM_BUNDLE_LOCATION = "System Bundle";
const std::string SYSTEM_BUNDLE_SYMBOLICNAME = "system_bundle";
const std::string BUNDLE_ACTIVATOR = "bundle.activator";
const std::string BUNDLE_SYMBOLICNAME = "bundle.symbolic_name";
const std::string BUNDLE_VERSION = "bundle.version";
const std::string LIBRARY_LOAD_OPTIONS = "org.cppmicroservices.library.load.options";
const std::string FRAMEWORK_LOG = "org.cppmicroservices.framework.log";
const std::string FRAMEWORK_STORAGE = "org.cppmicroservices.framework.storage";
const std::string FRAMEWORK_WORKING_DIR = "org.cppmicroservices.framework.working.dir";
const std::string FRAMEWORK_UUID = "org.cppmicroservices.framework.uuid";
const std::string FRAMEWORK_THREADING_SUPPORT = "org.cppmicroservices.framework.threading.support";
const std::string FRAMEWORK_VENDOR = "org.cppmicroservices.framework.vendor";
const std::string FRAMEWORK_VERSION = "org.cppmicroservices.framework.version";
const std::string OBJECTCLASS = "objectclass";
const std::string SERVICE_ID = "service.id";
const std::string SERVICE_RANKING = "service.ranking";
const std::string SERVICE_SCOPE = "service.scope";
const std::string SCOPE_SINGLETON = "singleton";
const std::string SCOPE_BUNDLE = "bundle";

}  // namespace cppmicroservices::Constants
