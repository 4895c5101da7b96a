#include "app/QuillowAppDelegate.h"

#include "platform/Window.h"

namespace quillow {

QuillowAppDelegate::QuillowAppDelegate(const Platform& platform)
    : MWDragDropBaseApp(platform)
    , bookmark_(platform.bookmarkStore) {}

void QuillowAppDelegate::applicationWillFinishLaunching(const Notification&) {
    if (window()) window()->makeKeyAndOrderFront();
    setProperTextColor({Color::Source::controlText});
}

void QuillowAppDelegate::applicationDidFinishLaunching(const Notification& notification) {
    adjustDestinationPath();
    MWDragDropBaseApp::applicationDidFinishLaunching(notification);
}

} // namespace quillow
