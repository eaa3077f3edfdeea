set(TROVEL_SANITIZE "" CACHE STRING
  "Sanitizers for everything built, as the compiler names them: address,undefined or thread")
if(TROVEL_SANITIZE)
  add_compile_options(
    -fsanitize=${TROVEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TROVEL_SANITIZE})
  # GCC 12 warns of overflows in instrumented library code that are not there. The plain builds are
  # the judges of warnings.
  target_compile_options(trovel_warnings INTERFACE -Wno-error)
endif()
