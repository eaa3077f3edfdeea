// EXPECT compile: not handled in switch
#import <ServiceManagement/ServiceManagement.h>
bool f(SMAppService* s) {
    switch (s.status) {
    case SMAppServiceStatusEnabled:
        return true;
    case SMAppServiceStatusNotRegistered:
    case SMAppServiceStatusNotFound:
        return false;
    }
    return false;
}
