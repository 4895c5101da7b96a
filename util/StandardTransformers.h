// Puts every transformer that needs no reference into the registry under its class name, which is how the windows' bindings name
// them.
#pragma once

namespace quillow {

class BookmarkStore;
class Clock;
class ImageCodec;
class TextUnarchiver;
class ValueTransformerRegistry;

/// The ports outlive the registry.
void registerStandardTransformers(ValueTransformerRegistry& registry, BookmarkStore& bookmarkStore, const Clock& clock,
                                  const ImageCodec& imageCodec, const TextUnarchiver& textUnarchiver); // selector: none

} // namespace quillow
