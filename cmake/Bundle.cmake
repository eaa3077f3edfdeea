# Trovel.app, signed. macOS ties the user's grants to the signature: an ad hoc one is new with every
# build, so whoever builds often gives an identity of their own.
include(ObjectiveCxx)
set(TROVEL_BUNDLE_IDENTIFIER app.trovel.Trovel CACHE STRING "What macOS calls the program")
set(TROVEL_SIGNING_IDENTITY - CACHE STRING "The identity that signs Trovel.app; - signs ad hoc")
set(TROVEL_SPARKLE_DIR "" CACHE PATH "The folder that holds Sparkle.framework")
set(TROVEL_FEED_URL https://trovel.example/appcast.xml CACHE STRING
  "Where Sparkle looks for new versions")
set(TROVEL_UPDATE_KEY "" CACHE STRING "The public EdDSA key of those who sign new versions")

# An update replaces the program, so nobody else may be able to offer one.
if(NOT EXISTS "${TROVEL_SPARKLE_DIR}/Sparkle.framework")
  message(FATAL_ERROR "TROVEL_SPARKLE_DIR is '${TROVEL_SPARKLE_DIR}', where there is no "
    "Sparkle.framework. Unpack a release of Sparkle 2 (https://sparkle-project.org) and name its "
    "folder.")
endif()
if(NOT TROVEL_FEED_URL MATCHES "^https://[^/&<>][^&<>]*$")
  message(FATAL_ERROR "TROVEL_FEED_URL is '${TROVEL_FEED_URL}'. It has to be an https address.")
endif()
string(LENGTH "${TROVEL_UPDATE_KEY}" update_key_length)
if(NOT TROVEL_UPDATE_KEY MATCHES "^[A-Za-z0-9+/]+=$" OR NOT update_key_length EQUAL 44)
  message(FATAL_ERROR "TROVEL_UPDATE_KEY is '${TROVEL_UPDATE_KEY}'. It has to be the 44 characters "
    "that Sparkle's generate_keys prints.")
endif()

set(CMAKE_OBJCXX_STANDARD ${CMAKE_CXX_STANDARD})
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
file(GLOB_RECURSE macos_sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/platform/macos/*.mm")
add_library(trovel_macos STATIC ${macos_sources})
target_compile_options(trovel_macos PRIVATE
  ${TROVEL_OBJCXX_OPTIONS} "-iframework${TROVEL_SPARKLE_DIR}")
target_link_libraries(trovel_macos PUBLIC trovel_ui PRIVATE trovel_warnings)
target_link_options(trovel_macos PUBLIC "-F${TROVEL_SPARKLE_DIR}")
foreach(framework
    AppKit ApplicationServices Carbon CoreFoundation CoreGraphics Foundation QuartzCore
    ScreenCaptureKit ServiceManagement Sparkle UniformTypeIdentifiers)
  target_link_libraries(trovel_macos PUBLIC "-framework ${framework}")
endforeach()

set(packaging "${CMAKE_SOURCE_DIR}/packaging/macos")
set(packaged "${packaging}/Info.plist.in" "${packaging}/Trovel.icns"
  "${packaging}/trovel.entitlements")
add_executable(trovel MACOSX_BUNDLE app/main.cpp)
target_link_libraries(trovel PRIVATE trovel_core trovel_macos trovel_warnings)
target_compile_definitions(trovel PRIVATE ${TROVEL_PRODUCT_DEFINITIONS})
set_target_properties(trovel PROPERTIES
  OUTPUT_NAME Trovel
  LINK_DEPENDS "${packaged}"
  BUILD_WITH_INSTALL_RPATH ON
  INSTALL_RPATH @executable_path/../Frameworks
  MACOSX_BUNDLE_INFO_PLIST "${packaging}/Info.plist.in"
  MACOSX_BUNDLE_BUNDLE_NAME Trovel
  MACOSX_BUNDLE_BUNDLE_VERSION ${TROVEL_BUILD_NUMBER}
  MACOSX_BUNDLE_GUI_IDENTIFIER ${TROVEL_BUNDLE_IDENTIFIER}
  MACOSX_BUNDLE_ICON_FILE Trovel
  MACOSX_BUNDLE_SHORT_VERSION_STRING ${PROJECT_VERSION})

# A signature seals what lies in the bundle, so it is put together first and signed from the inside
# out. Sparkle's XPC services are for sandboxed programs alone.
set(contents "$<TARGET_BUNDLE_CONTENT_DIR:trovel>")
set(sparkle "${contents}/Frameworks/Sparkle.framework")
set(sign codesign --force --sign "${TROVEL_SIGNING_IDENTITY}")
if(NOT TROVEL_SIGNING_IDENTITY STREQUAL "-")
  # With the hardened runtime a program that is signed ad hoc could not load Sparkle.
  list(APPEND sign --options runtime --timestamp)
endif()
add_custom_command(TARGET trovel POST_BUILD
  COMMAND ${CMAKE_COMMAND} -E make_directory "${contents}/Frameworks" "${contents}/Resources"
  COMMAND ${CMAKE_COMMAND} -E copy "${packaging}/Trovel.icns" "${contents}/Resources/Trovel.icns"
  COMMAND ${CMAKE_COMMAND} -E rm -rf "${sparkle}"
  COMMAND ditto "${TROVEL_SPARKLE_DIR}/Sparkle.framework" "${sparkle}"
  COMMAND ${CMAKE_COMMAND} -E rm -rf "${sparkle}/XPCServices" "${sparkle}/Versions/B/XPCServices"
  COMMAND ${sign} "${sparkle}/Versions/B/Autoupdate"
  COMMAND ${sign} "${sparkle}/Versions/B/Updater.app"
  COMMAND ${sign} "${sparkle}"
  COMMAND ${sign} --entitlements "${packaging}/trovel.entitlements" "$<TARGET_BUNDLE_DIR:trovel>"
  VERBATIM)
