#include <cppmicroservices/LDAPFilter.h>

#include <algorithm>
#include <bundle_context_private.hpp>
#include <bundle_private.hpp>
#include <service_names.hpp>
#include <service_record.hpp>
#include <service_registry.hpp>

namespace cppmicroservices {

namespace {

bool ranksBefore(const std::shared_ptr<ServiceRecord>& left, const std::shared_ptr<ServiceRecord>& right)
{
    return left->RanksBefore(*right);
}

}  // namespace

ServiceRegistrationU ServiceRegistry::Register(const BundleContextPrivate& context,
                                               const InterfaceMapConstPtr& objects,
                                               const ServiceProperties& properties)
{
    const auto record = std::make_shared<ServiceRecord>(context.Owner(), objects, properties);
    try {
        Add(record);
        context
            .Owner();  // throws when the bundle has stopped, perhaps before it could unregister this service
    } catch (...) {
        Unregister(*record);
        throw;
    }
    return ServiceRegistrationBase(record);
}

void ServiceRegistry::Add(const std::shared_ptr<ServiceRecord>& record)
{
    const std::lock_guard lock(mutex_);
    all_.push_back(record);
    for (const std::string& interfaceId : record->Interfaces()) {
        Records& records = byInterface_[interfaceId];
        records.insert(std::ranges::upper_bound(records, record, ranksBefore), record);
    }
}

void ServiceRegistry::Remove(const ServiceRecord& record)
{
    const auto isRecord = [&](const auto& candidate) { return candidate.get() == &record; };
    const std::lock_guard lock(mutex_);
    std::erase_if(all_, isRecord);
    for (const std::string& interfaceId : record.Interfaces()) {
        const auto found = byInterface_.find(interfaceId);
        if (found == byInterface_.end()) {
            continue;
        }
        std::erase_if(found->second, isRecord);
        if (found->second.empty()) {
            byInterface_.erase(found);
        }
    }
}

bool ServiceRegistry::Unregister(ServiceRecord& record)
{
    Remove(record);
    return record.Unregister();
}

void ServiceRegistry::SetProperties(ServiceRecord& record, const ServiceProperties& properties)
{
    auto replaced = record.MakeReplacement(properties);
    const std::lock_guard lock(mutex_);
    record.SwapProperties(replaced);
    for (const std::string& interfaceId : record.Interfaces()) {
        const auto found = byInterface_.find(interfaceId);
        if (found != byInterface_.end()) {
            std::ranges::sort(found->second, ranksBefore);
        }
    }
}

ServiceRegistry::Records ServiceRegistry::Candidates(const std::string& interfaceId) const
{
    const std::lock_guard lock(mutex_);
    if (interfaceId.empty()) {
        Records ranked = all_;
        std::ranges::sort(ranked, ranksBefore);
        return ranked;
    }
    const auto found = byInterface_.find(interfaceId);
    return found == byInterface_.end() ? Records() : found->second;
}

std::vector<ServiceReferenceU> ServiceRegistry::Find(const std::string& interfaceName,
                                                     const std::string& filterText) const
{
    const LDAPFilter filter = filterText.empty() ? LDAPFilter() : LDAPFilter(filterText);
    const std::string interfaceId(withoutLeadingColons(interfaceName));
    const Records candidates = Candidates(interfaceId);
    std::vector<ServiceReferenceU> references;
    references.reserve(candidates.size());
    for (const auto& record : candidates) {
        if (!filter || filter.Match(*record->Properties())) {
            references.push_back(ServiceReferenceBase(record, interfaceId));
        }
    }
    return references;
}

template <class Predicate>
std::vector<ServiceReferenceU> ServiceRegistry::Select(Predicate isSelected) const
{
    std::vector<ServiceReferenceU> references;
    const std::lock_guard lock(mutex_);
    for (const auto& record : all_) {
        if (isSelected(*record)) {
            references.push_back(ServiceReferenceBase(record, {}));
        }
    }
    return references;
}

std::vector<ServiceReferenceU> ServiceRegistry::RegisteredBy(const BundlePrivate& bundle) const
{
    return Select([&](const ServiceRecord& record) { return record.Owner().get() == &bundle; });
}

std::vector<ServiceReferenceU> ServiceRegistry::UsedBy(const BundlePrivate& bundle) const
{
    return Select([&](const ServiceRecord& record) { return record.IsUsedBy(bundle); });
}

void ServiceRegistry::RemoveBundle(BundlePrivate& bundle)
{
    while (const auto record = FindServiceOf(bundle)) {
        if (record->Owner().get() == &bundle) {
            Unregister(*record);
        } else {
            record->Release(bundle.weak_from_this());
        }
    }
}

std::shared_ptr<ServiceRecord> ServiceRegistry::FindServiceOf(const BundlePrivate& bundle) const
{
    const std::lock_guard lock(mutex_);
    const auto found = std::ranges::find_if(all_, [&](const auto& record) {
        return record->Owner().get() == &bundle || record->IsUsedBy(bundle);
    });
    return found == all_.end() ? nullptr : *found;
}

}  // namespace cppmicroservices
