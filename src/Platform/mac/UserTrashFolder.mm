// SPDX-License-Identifier: MIT
#include "UserTrashFolder.h"

#import <Foundation/Foundation.h>

#if !__has_feature(objc_arc)
#error "UserTrashFolder.mm is built with ARC (-fobjc-arc)"
#endif

std::optional<QString> UserTrashFolder::path()
{
    @autoreleasepool {
        NSArray<NSURL *> *folders =
            [NSFileManager.defaultManager URLsForDirectory:NSTrashDirectory
                                                 inDomains:NSUserDomainMask];
        NSString *path = folders.firstObject.path; // no trailing "/"
        if (path == nil || path.length == 0)
            return std::nullopt;
        return QString::fromNSString(path);
    }
}
