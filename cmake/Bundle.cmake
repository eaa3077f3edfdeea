# Trovel.app, signed. macOS ties the user's grants to the signature: an ad hoc one is new with every
# build, so whoever builds often gives an identity of their own.
include(ObjectiveCxx)
set(TROVEL_BUNDLE_IDENTIFIER app.trovel.Trovel CACHE STRING "What macOS calls the program")
set(TROVEL_SIGNING_IDENTITY - CACHE STRING "The identity that signs Trovel.app; - signs ad hoc")

set(CMAKE_OBJCXX_STANDARD ${CMAKE_CXX_STANDARD})
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
file(GLOB_RECURSE macos_sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/platform/macos/*.mm")
add_library(trovel_macos STATIC ${macos_sources})
target_compile_options(trovel_macos PRIVATE ${TROVEL_OBJCXX_OPTIONS})
target_link_libraries(trovel_macos PUBLIC trovel_ui PRIVATE trovel_warnings)
foreach(framework
    AppKit ApplicationServices Carbon CoreFoundation CoreGraphics Foundation ScreenCaptureKit)
  target_link_libraries(trovel_macos PUBLIC "-framework ${framework}")
endforeach()

set(packaging "${CMAKE_SOURCE_DIR}/packaging/macos")
set(packaged "${packaging}/Info.plist.in" "${packaging}/Trovel.icns"
  "${packaging}/trovel.entitlements")
add_executable(trovel MACOSX_BUNDLE app/main.cpp)
target_link_libraries(trovel PRIVATE trovel_core trovel_macos trovel_warnings)
set_target_properties(trovel PROPERTIES
  OUTPUT_NAME Trovel
  LINK_DEPENDS "${packaged}"
  MACOSX_BUNDLE_INFO_PLIST "${packaging}/Info.plist.in"
  MACOSX_BUNDLE_BUNDLE_NAME Trovel
  MACOSX_BUNDLE_BUNDLE_VERSION ${PROJECT_VERSION}
  MACOSX_BUNDLE_GUI_IDENTIFIER ${TROVEL_BUNDLE_IDENTIFIER}
  MACOSX_BUNDLE_ICON_FILE Trovel
  MACOSX_BUNDLE_SHORT_VERSION_STRING ${PROJECT_VERSION})
# The signature seals the resources, so they are in place before it.
set(resources "$<TARGET_BUNDLE_CONTENT_DIR:trovel>/Resources")
add_custom_command(TARGET trovel POST_BUILD
  COMMAND ${CMAKE_COMMAND} -E make_directory "${resources}"
  COMMAND ${CMAKE_COMMAND} -E copy "${packaging}/Trovel.icns" "${resources}/Trovel.icns"
  COMMAND codesign --force --sign "${TROVEL_SIGNING_IDENTITY}" --options runtime
    --entitlements "${packaging}/trovel.entitlements" "$<TARGET_BUNDLE_DIR:trovel>"
  VERBATIM)
