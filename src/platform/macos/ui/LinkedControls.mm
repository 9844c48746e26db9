#include "platform/macos/ui/LinkedControls.h"

@implementation NSView (FernhopLinked)

- (fernhop::macos::ViewLink *)fernhopLink {
    return nullptr;
}

- (void)setFernhopLink:(fernhop::macos::ViewLink *)link {
    static_cast<void>(link);
}

@end

@implementation FernhopTextField
@synthesize fernhopLink;
@end

@implementation FernhopSearchField
@synthesize fernhopLink;
@end

@implementation FernhopPopUpButton
@synthesize fernhopLink;
@end

@implementation FernhopButton
@synthesize fernhopLink;
@end

@implementation FernhopTableView
@synthesize fernhopLink;
@end

@implementation FernhopLayerView

@synthesize fernhopLink;

- (void)viewDidChangeEffectiveAppearance {
    [super viewDidChangeEffectiveAppearance];
    if (fernhopLink)
        fernhopLink->show();
}

@end

@implementation FernhopScrollView

@synthesize fernhopLink;

- (void)viewDidChangeEffectiveAppearance {
    [super viewDidChangeEffectiveAppearance];
    if (fernhopLink)
        fernhopLink->show();
}

@end
