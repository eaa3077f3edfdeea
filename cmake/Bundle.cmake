# Trovel.app, signed. macOS ties the user's grants to the signature: an ad hoc one is new with every
# build, so whoever builds often gives an identity of their own.
include(ObjectiveCxx)
set(TROVEL_BUNDLE_IDENTIFIER app.trovel.Trovel CACHE STRING "What macOS calls the program")
set(TROVEL_SIGNING_IDENTITY - CACHE STRING "The identity that signs Trovel.app; - signs ad hoc")
set(TROVEL_SPARKLE_DIR "" CACHE PATH "The folder that holds Sparkle.framework; empty fetches it")
set(TROVEL_FEED_URL https://trovel.example/appcast.xml CACHE STRING
  "Where Sparkle looks for new versions")
# Nobody has the private half of this one. Who hands out builds gives the key that signs them, which
# Sparkle's generate_keys prints.
set(TROVEL_UPDATE_KEY ZrpOWBdanyMub0rmoReCqEt2JwiyMwG21N7WgUMKWGU= CACHE STRING
  "The public EdDSA key of those who sign new versions")

set(sparkle_dir "${TROVEL_SPARKLE_DIR}")
if(NOT sparkle_dir)
  include(FetchContent)
  FetchContent_Declare(sparkle
    URL https://github.com/sparkle-project/Sparkle/releases/download/2.9.6/Sparkle-2.9.6.tar.xz
    URL_HASH SHA256=52bf9e88cdd972fc0c81501377a880e90d47031bd8ca5462488f843e2609e192)
  FetchContent_MakeAvailable(sparkle)
  set(sparkle_dir "${sparkle_SOURCE_DIR}")
endif()
if(NOT EXISTS "${sparkle_dir}/Sparkle.framework")
  message(FATAL_ERROR "TROVEL_SPARKLE_DIR is '${TROVEL_SPARKLE_DIR}', where there is no "
    "Sparkle.framework.")
endif()
# An update replaces the program, so nobody else may be able to offer one.
if(NOT TROVEL_FEED_URL MATCHES "^https://[^/&<>][^&<>]*$")
  message(FATAL_ERROR "TROVEL_FEED_URL is '${TROVEL_FEED_URL}'. It has to be an https address.")
endif()
string(LENGTH "${TROVEL_UPDATE_KEY}" update_key_length)
if(NOT TROVEL_UPDATE_KEY MATCHES "^[A-Za-z0-9+/]+=$" OR NOT update_key_length EQUAL 44)
  message(FATAL_ERROR "TROVEL_UPDATE_KEY is '${TROVEL_UPDATE_KEY}'. It has to be 32 bytes in "
    "base 64.")
endif()

set(CMAKE_OBJCXX_STANDARD ${CMAKE_CXX_STANDARD})
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
file(GLOB_RECURSE macos_sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/platform/macos/*.mm")
add_library(trovel_macos STATIC ${macos_sources})
target_compile_options(trovel_macos PRIVATE
  ${TROVEL_OBJCXX_OPTIONS} "-iframework${sparkle_dir}")
target_link_libraries(trovel_macos PUBLIC trovel_ui PRIVATE trovel_warnings)
target_link_options(trovel_macos PUBLIC "-F${sparkle_dir}")
foreach(framework
    AppKit ApplicationServices Carbon CoreFoundation CoreGraphics Foundation QuartzCore
    ScreenCaptureKit ServiceManagement Sparkle UniformTypeIdentifiers)
  target_link_libraries(trovel_macos PUBLIC "-framework ${framework}")
endforeach()

set(packaging "${CMAKE_SOURCE_DIR}/packaging/macos")
# What is signed anew when it changes: CMake writes Info.plist, with the versions, without linking.
set(packaged "${CMAKE_CURRENT_BINARY_DIR}/Trovel.app/Contents/Info.plist"
  "${packaging}/Trovel.icns" "${packaging}/trovel.entitlements")
add_executable(trovel MACOSX_BUNDLE app/main.cpp)
target_link_libraries(trovel PRIVATE trovel_app trovel_macos trovel_warnings)
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
# out. Sparkle's XPC services are for sandboxed programs alone. The entitlements, which let the
# program bring the chat app to the front, carry no comments: their reader is stricter than plutil.
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
  COMMAND ditto "${sparkle_dir}/Sparkle.framework" "${sparkle}"
  COMMAND ${CMAKE_COMMAND} -E rm -rf "${sparkle}/XPCServices" "${sparkle}/Versions/B/XPCServices"
  COMMAND ${sign} "${sparkle}/Versions/B/Autoupdate"
  COMMAND ${sign} "${sparkle}/Versions/B/Updater.app"
  COMMAND ${sign} "${sparkle}"
  COMMAND ${sign} --entitlements "${packaging}/trovel.entitlements" "$<TARGET_BUNDLE_DIR:trovel>"
  VERBATIM)
