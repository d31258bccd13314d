// SPDX-License-Identifier: MIT
#include "WorkspaceIcon.h"

#import <AppKit/AppKit.h>

#if !__has_feature(objc_arc)
#error "WorkspaceIcon.mm is built with ARC (-fobjc-arc)"
#endif

std::optional<QByteArray> WorkspaceIcon::pngForFile(const QString &path)
{
    @autoreleasepool {
        NSImage *icon = [NSWorkspace.sharedWorkspace iconForFile:path.toNSString()];
        NSData *tiff = icon.TIFFRepresentation;
        if (tiff == nil)
            return std::nullopt;
        NSBitmapImageRep *bitmap = [[NSBitmapImageRep alloc] initWithData:tiff];
        if (bitmap == nil)
            return std::nullopt;
        NSData *png = [bitmap representationUsingType:NSBitmapImageFileTypePNG properties:@{}];
        if (png == nil)
            return std::nullopt;
        return QByteArray::fromNSData(png);
    }
}
