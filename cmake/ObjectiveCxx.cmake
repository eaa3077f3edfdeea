# How the Objective-C++ of platform/macos is compiled: by the bundle's build on a Mac, and by the
# check in tests/macos on other systems.
set(TROVEL_OBJCXX_OPTIONS -fobjc-arc
  -Warc-repeated-use-of-weak -Wassign-enum -Wblock-capture-autoreleasing -Wcompletion-handler
  -Wimplicit-retain-self -Wnullable-to-nonnull-conversion -Wselector -Wstrict-selector-match
  -Wsuper-class-method-mismatch -Wundeclared-selector -Wunguarded-availability)
