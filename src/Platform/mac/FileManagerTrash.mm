// SPDX-License-Identifier: MIT
#include "FileManagerTrash.h"

#import <Foundation/Foundation.h>

#if !__has_feature(objc_arc)
#error "FileManagerTrash.mm is built with ARC (-fobjc-arc)"
#endif

Result<QString> FileManagerTrash::moveToTrash(const QString &path) const
{
    @autoreleasepool {
        NSURL *url = [NSURL fileURLWithPath:path.toNSString()];
        NSError *failure = nil;
        NSURL *result = nil;
        if ([NSFileManager.defaultManager trashItemAtURL:url
                                        resultingItemURL:&result
                                                   error:&failure])
            return result != nil ? QString::fromNSString(result.path) : QString();
        return Failure(failure != nil
                           ? QString::fromNSString(failure.localizedDescription)
                           : QStringLiteral("The item could not be moved to the Trash."));
    }
}
