#include "platform/macos/login_item_mac.h"

#include "platform/macos/bridge/convert.h"

#import <ServiceManagement/ServiceManagement.h>

namespace trovel {

namespace {

LoginItem::Result failure(NSError* _Nullable error) {
    return std::unexpected(fromNSString(error.localizedDescription));
}

} // namespace

LoginItemStatus LoginItemMac::status() const {
    switch (SMAppService.mainAppService.status) {
    case SMAppServiceStatusNotRegistered:
        return LoginItemStatus::notRegistered;
    case SMAppServiceStatusEnabled:
        return LoginItemStatus::enabled;
    case SMAppServiceStatusRequiresApproval:
        return LoginItemStatus::requiresApproval;
    case SMAppServiceStatusNotFound:
        return LoginItemStatus::notFound;
    }
    return LoginItemStatus::notFound; // A status that a later system adds.
}

LoginItem::Result LoginItemMac::registerItem() {
    NSError* error = nil;
    if (![SMAppService.mainAppService registerAndReturnError:&error]) return failure(error);
    return {};
}

LoginItem::Result LoginItemMac::unregisterItem() {
    NSError* error = nil;
    if (![SMAppService.mainAppService unregisterAndReturnError:&error]) return failure(error);
    return {};
}

} // namespace trovel
