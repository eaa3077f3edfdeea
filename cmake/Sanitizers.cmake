set(TROVEL_SANITIZE "" CACHE STRING
  "Sanitizers for everything built, as the compiler names them: address,undefined or thread")
if(TROVEL_SANITIZE)
  add_compile_options(
    -fsanitize=${TROVEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TROVEL_SANITIZE})
endif()
