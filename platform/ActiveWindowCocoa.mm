#include "platform/ActiveWindow.h"

#import <AppKit/AppKit.h>

void macosActiveWindow()
{
    [NSApp activateIgnoringOtherApps:YES];
}
