#pragma once

#include <cstdlib>
#include <stdexcept>

#include "support/temporary_folder.h"

namespace hushpane {

// Writes into a folder what describes the settings of GNOME and Cinnamon, as far as they concern the background; one of
// Cinnamon's is broken.
inline void writeBackgroundSchemas(const std::filesystem::path& folder) {
  writeFile(folder / "test.gschema.xml", R"(<schemalist>
    <enum id="test.options">
      <value nick="none" value="0"/><value nick="wallpaper" value="1"/><value nick="centered" value="2"/>
      <value nick="scaled" value="3"/><value nick="stretched" value="4"/><value nick="zoom" value="5"/>
      <value nick="spanned" value="6"/>
    </enum>
    <enum id="test.shading">
      <value nick="solid" value="0"/><value nick="vertical" value="1"/><value nick="horizontal" value="2"/>
    </enum>
    <schema id="org.gnome.desktop.background" path="/org/gnome/desktop/background/">
      <key name="picture-uri" type="s"><default>''</default></key>
      <key name="picture-uri-dark" type="s"><default>''</default></key>
      <key name="picture-options" enum="test.options"><default>'zoom'</default></key>
      <key name="primary-color" type="s"><default>'#023c88'</default></key>
      <key name="secondary-color" type="s"><default>'#5789ca'</default></key>
      <key name="color-shading-type" enum="test.shading"><default>'solid'</default></key>
    </schema>
    <schema id="org.gnome.desktop.interface" path="/org/gnome/desktop/interface/">
      <key name="color-scheme" type="s"><default>'default'</default></key>
    </schema>
    <schema id="org.cinnamon.desktop.background" path="/org/cinnamon/desktop/background/">
      <key name="picture-uri" type="i"><default>7</default></key>
    </schema>
    <schema id="org.mate.background"><key name="picture-filename" type="s"><default>''</default></key></schema>
  </schemalist>)");
  if (std::system(("glib-compile-schemas '" + folder.string() + "'").c_str()) != 0)
    throw std::runtime_error("the schemas of settings cannot be compiled");
}

}  // namespace hushpane
