#pragma once

namespace lumatile {

/// Tells screen readers what the settings' own controls are: the toolkit knows nothing but a plain
/// widget in them. To be called before the first of them is made; again does nothing.
void describeSettingsControls();

}  // namespace lumatile
