#include "tests/macos/run/fakes/mac.h"

#import <ServiceManagement/ServiceManagement.h>

@implementation SMAppService

+ (SMAppService*)mainAppService {
    return [[SMAppService alloc] init];
}

- (SMAppServiceStatus)status {
    return static_cast<SMAppServiceStatus>(fakes::mac().loginItemStatus);
}

// "…returns NO and an error": a program that the user has to approve yet cannot register again.
- (BOOL)registerAndReturnError:(NSError**)error {
    auto& mac = fakes::mac();
    if (!mac.loginItemError.empty()) {
        if (error != nullptr) *error = [NSError errorWithText:mac.loginItemError];
        return NO;
    }
    mac.record("register login item");
    mac.loginItemStatus = SMAppServiceStatusEnabled;
    return YES;
}

- (BOOL)unregisterAndReturnError:(NSError**)error {
    auto& mac = fakes::mac();
    if (!mac.loginItemError.empty()) {
        if (error != nullptr) *error = [NSError errorWithText:mac.loginItemError];
        return NO;
    }
    mac.record("unregister login item");
    mac.loginItemStatus = SMAppServiceStatusNotRegistered;
    return YES;
}

@end
