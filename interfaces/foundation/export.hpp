#pragma once

/// Marks what a platform library offers to others; everything else is hidden.
#define VX_API __attribute__((visibility("default")))
