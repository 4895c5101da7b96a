// Registers every transformer that needs no reference under its class name, which the windows' bindings use.
#pragma once

namespace quillow {

class BookmarkStore;
class Clock;
class ImageCodec;
class TextUnarchiver;
class ValueTransformerRegistry;

/// The ports must outlive the registry.
void registerStandardTransformers(ValueTransformerRegistry& registry, BookmarkStore& bookmarkStore, const Clock& clock,
                                  const ImageCodec& imageCodec, const TextUnarchiver& textUnarchiver); // selector: none

} // namespace quillow
