// EXPECT compile: use of undeclared identifier 'DISPATCH_TIME_FOREVER'
#import <dispatch/dispatch.h>
void wait(dispatch_semaphore_t answered) {
    dispatch_semaphore_wait(answered, DISPATCH_TIME_FOREVER);
}
