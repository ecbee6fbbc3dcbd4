# vantrelix_embed(TARGET FILE SYMBOL)
#
# Adds a source to TARGET that holds the text of FILE as `extern const std::string_view vantrelix::SYMBOL`. Made when the
# project is configured, which happens again when FILE changes.
function(vantrelix_embed target file symbol)
  set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
  file(READ ${file} text)
  set(generated ${PROJECT_BINARY_DIR}/embedded/${symbol}.cpp)
  get_filename_component(name ${file} NAME)
  file(CONFIGURE OUTPUT ${generated} @ONLY NEWLINE_STYLE UNIX CONTENT [==[
// Made from @name@; change that file, not this one.
#include <string_view>

namespace vantrelix {

extern const std::string_view @symbol@;
const std::string_view @symbol@ = R"embedded(@text@)embedded";

}  // namespace vantrelix
]==])
  target_sources(${target} PRIVATE ${generated})
endfunction()
