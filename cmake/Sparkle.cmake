# trovel_sparkle: Sparkle.framework, to compile with and to link. TROVEL_SPARKLE_FOUND is its
# folder, from which the bundle is packed.
set(TROVEL_SPARKLE_DIR "" CACHE PATH "The folder that holds Sparkle.framework; empty fetches it")

set(TROVEL_SPARKLE_FOUND "${TROVEL_SPARKLE_DIR}")
if(NOT TROVEL_SPARKLE_FOUND)
  include(FetchContent)
  FetchContent_Declare(sparkle
    URL https://github.com/sparkle-project/Sparkle/releases/download/2.9.6/Sparkle-2.9.6.tar.xz
    URL_HASH SHA256=52bf9e88cdd972fc0c81501377a880e90d47031bd8ca5462488f843e2609e192)
  FetchContent_MakeAvailable(sparkle)
  set(TROVEL_SPARKLE_FOUND "${sparkle_SOURCE_DIR}")
endif()
if(NOT EXISTS "${TROVEL_SPARKLE_FOUND}/Sparkle.framework")
  message(FATAL_ERROR "TROVEL_SPARKLE_DIR is '${TROVEL_SPARKLE_FOUND}', where there is no "
    "Sparkle.framework.")
endif()

add_library(trovel_sparkle INTERFACE)
target_compile_options(trovel_sparkle INTERFACE "-iframework${TROVEL_SPARKLE_FOUND}")
target_link_options(trovel_sparkle INTERFACE "-F${TROVEL_SPARKLE_FOUND}")
target_link_libraries(trovel_sparkle INTERFACE "-framework Sparkle")
