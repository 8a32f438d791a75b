#pragma once

/// Marks what a shared library of this project exports; everything else stays hidden.
#define BAILUXSKO_API [[gnu::visibility("default")]]
