// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/strings/Strings.h"

#include <cstddef>
#include <iterator>
#include <map>

namespace {

struct StringRow {
    Str id;
    std::string_view text;
};

using enum Str;

// Odd spellings and doubled blanks are meant: scripts and habits rely on them.
constexpr StringRow kRows[] = {
    {ApplicationTitle, "Morvandelite Pixolune"},
    {ReadingFile, "Reading file "},
    {SavingFile, "Saving file "},
    {LoadFileFailed, "Load file %s fail!"},
    {SaveFileFailed, "Save to file %s fail!"},
    {OutOfMemory, "Out of Memory!"},
    {SelectedPartEmpty, "Your selected  proportion is empty or transparent!"},
    {ObjectsLocked,
     "Some objects are locked.If you want to move them,please click the lock icon to unlock them in "
     "the Objects Panel."},
    {NoExcessBorder, "Selected object(s) has/have no excess transparent border!"},
    {NoVisibleObject, "The selection must have at least one visible object!"},
    {EraseNoObject, "A  object must be present at least before erasing!"},
    {EraseNoneSelected, "A object must be selected at least before erasing!"},
    {NoObject, "A object must be present at least!"},
    {NoneSelected, "A object must be selected at least!"},
    {AlreadyInFront, "Your selected object(s) has/have been in front!"},
    {AlreadyBack, "Your selected object(s) has/have been back!"},
    {LineNoObject, "A  object must be present at least before drawing line!"},
    {LineNoneSelected, "A object must be selected at least before drawing line!"},
    {FloodNoObject, "A  object must be present at least before flooding!"},
    {FloodNoneSelected, "A object must be selected at least before flooding!"},
    {FloodTransparentArea,
     "If you want to fill the transparent area,please check \"Allow painting on transparent "
     "areas\" option."},
    {ClickOutsideSelection, "If you have made a selection area,plese click on it!"},
    {SelectOnlyOne, "Please select only one visible object!"},
    {ClearSelection, "Are you sure clear the selection?"},
    {SaveChanges, "Save changes to %s?"},
    {OpenWholeObjects, "The file is damaged, but %d of its %d objects are whole. Open these as a new document?"},
    {CantUndo, "Can't &Undo"},
    {CantRedo, "Can't &Redo"},
    {UndoShowHide, "Undo show/hide object(s)"},
    {UndoLockUnlock, "Undo lock/unlock object(s)"},
    {UndoMove, "Undo move object(s)"},
    {UndoAlignTop, "Undo align top"},
    {UndoAlignBottom, "Undo align bottom"},
    {UndoAlignLeft, "Undo align left"},
    {UndoAlignRight, "Undo align right"},
    {UndoCenterVertically, "Undo center vertically"},
    {UndoCenterHorizontally, "Undo center horizontally"},
    {UndoCenterBoth, "Undo center vertically and horizontally"},
    {UndoNewObject, "Undo new object"},
    {UndoDuplicate, "Undo duplicate object(s)"},
    {UndoDeleteObjects, "Undo delete object(s)"},
    {UndoCombine, "Undo combine as single object"},
    {UndoPaste, "Undo paste"},
    {UndoDelete, "Undo delete"},
    {UndoCut, "Undo cut"},
    {UndoAddText, "Undo add text"},
    {UndoPaintRectangle, "Undo paint rectangle"},
    {UndoPaintEllipse, "Undo paint ellipse"},
    {UndoPaintPolygon, "Undo paint polygon"},
    {UndoAddImageFiles, "Undo Add image file(s)"},
    {UndoAddAvi, "Undo Add AVI"},
    {UndoOpacity, "Undo modify opacity"},
    {UndoMakeFrame, "Undo make frame as single object"},
    {UndoMoveToFront, "Undo move to front"},
    {UndoMoveToBack, "Undo move to back"},
    {UndoMoveForward, "Undo move forward"},
    {UndoMoveBackward, "Undo move backward"},
    {UndoTrim, "Undo trim Object(s)"},
    {UndoPaintLine, "Undo paint line"},
    {UndoFlood, "Undo flood"},
    {UndoRotate, "Undo rotate"},
    {UndoErase, "Undo erase"},
    {UndoNegative, "Undo Negative"},
    {UndoGray, "Undo Gray"},
    {UndoMirrorHorizontally, "Undo Mirror horizontally"},
    {UndoMirrorVertically, "Undo Mirror vertically"},
    {UndoAdjustRgb, "Undo Adjust red/green/blue"},
    {UndoAdjustHsl, "Undo Adjust Hue/Saturation/Lightness"},
    {UndoAdjustBc, "Undo Adjust Brightness/Contrast"},
    {UndoBlur, "Undo Blur"},
    {UndoGaussianBlur, "Undo Gaussian Blur"},
    {UndoSharpness, "Undo Sharpness"},
    {UndoEmboss, "Undo Emboss"},
    {UndoSunspot, "Undo Sunspot"},
    {UndoResize, "Undo Resize animation"},
    {UndoProperties, "Undo modify object's properties"},
    {UndoEditText, "Undo edit text"},
    {UndoRectangularSelection, "Undo Rectangular Selection"},
    {UndoEllipticSelection, "Undo Elliptic Selection"},
    {UndoLassoSelection, "Undo Lasso Selection"},
    {UndoMagicWandSelection, "Undo Magic Wand Selection"},
    {UndoSelectAll, "Undo Select All"},
    {UndoUnselectAll, "Undo Unselect All"},
    {UndoInvert, "Undo Invert"},
    {UndoMoveSelection, "Undo Move Selection"},
    {PointerPosition, " x=%d y=%d"},
    {DraggedSize, "%d x %d at"},
    {PointerPane, "Pointer position"},
    {DraggedRectPane, "Size and place of what is being drawn or selected"},
    {CanvasSizePane, "Canvas size"},
    {ZoomPane, "Zoom"},
    {ProgressPane, "Progress"},
    {MoreColors, "More..."},
    {DoNotAskAgain, "&Do not ask again"},
    {Width, "Width:"},
    {Height, "Height:"},
    {OpenFile, "Open"},
    {AllSupportedFormats, "All supported formats"},
    {AllFiles, "All files"},
    {SaveDocumentAs, "Save As"},
    {NativeFilter, "Morvandelite Pixolune File(*.pxd)"},
    {RecentFiles, "&Recent Files"},
    {CanvasDescription, "%1 x %2 pixels, shown at %3 percent, %4 object(s), %5 selected"},
    {ObjectDescription, "at %1, %2, %3 x %4 pixels, opacity %5 percent"},
    {StateHidden, "hidden"},
    {StateLocked, "locked"},
    {ObjectsPanel, "Objects Panel"},
    {Opacity, "Opacity:"},
    {Rename, "&Rename"},
    {ShowObject, "&Visible"},
    {LockObject, "&Locked"},
    {ShowAllItems, "Show &All Items"},
    {ShowDetails, "Show &Details"},
    {ThumbnailSize, "&Thumbnail Size"},
    {OptionsPanel, "Options Panel"},
    {Foreground, "Foreground:"},
    {Background, "Background:"},
    {SwapColors, "Swap the two colors"},
    {ResetColors, "Black and white"},
    {PickedTransparency, "Transparent:"},
    {FillSingleColor, "Single color"},
    {FillLeftToRight, "Left to right"},
    {FillTopToBottom, "Top to bottom"},
    {FillDiagonal, "From the top left corner"},
    {FillOtherDiagonal, "From the top right corner"},
    {FillFromCenter, "From the center"},
    {Similarity, "Similarity:"},
    {OnlyConnectedPixels, "Only connected pixels"},
    {LineWidth, "Line width:"},
    {SmoothDegree, "Smooth degree:"},
    {TransparencyLabel, "Transparency:"},
    {RoundCap, "Round cap"},
    {StraightLine, "Straight line"},
    {AllowTransparentAreas, "Allow painting on transparent areas"},
    {FloodConnectedPixels, "  Only fill connected pixels."},
    {FloodTransparentAreas, "  Allow painting on transparent areas."},
    {FillInside, "Fill inside"},
    {Gradient, "Gradient"},
    {RoundCorner, "Round corner:"},
    {ResizeImage, "Resize Image"},
    {NewSize, "New size"},
    {Pixels, "Pixels"},
    {Percentage, "Percentage"},
    {PreserveRatio, "Preserve Ratio"},
    {ToolBar, "Toolbar"},
    {DrawingBar, "Drawing Toolbar"},
    {PinPanel, "Keep beside the picture"},
    {UnpinPanel, "Hide at the edge of the window"},
    {FloatPanel, "Float"},
    {HidePanel, "Hide"},
    {WaitingPanels, "Panels at the edge"},
    {OpenDocuments, "Open documents"},
    {PageSetup, "Page Setup"},
    {PrintPreview, "Print Preview"},
    {PrintFailed, "The picture could not be printed."},
    {Paper, "Paper"},
    {PaperSize, "&Size:"},
    {Portrait, "Po&rtrait"},
    {Landscape, "&Landscape"},
    {Margins, "Margins"},
    {MarginLeft, "L&eft:"},
    {MarginTop, "&Top:"},
    {MarginRight, "Ri&ght:"},
    {MarginBottom, "&Bottom:"},
    {PrintScale, "Scale"},
    {FitPage, "&Fit the page"},
    {ActualSizeAt, "&Actual size at"},
    {PixelsPerInch, " pixels per inch"},
    {PrintPosition, "Position"},
    {CenteredOnPage, "&Centered"},
    {FromLeftMargin, "From the left &margin:"},
    {FromTopMargin, "From the to&p margin:"},
    {Millimetres, " mm"},
    {NewImage, "New Image"},
    {ImageDimension, "Image dimension"},
    {Appearance, "Appearance"},
    {SimpleColor, "Simple color"},
    {Transparent, "Transparent"},
    {Preferences, "Preferences"},
    {Maintain, "Maintain"},
    {LevelsOfUndoRedo, "levels of Undo/Redo"},
    {HandlingPsdLayers, "Handling PSD Layers"},
    {ImportLayersAsObjects, "Import these layers as objects"},
    {ImportCompositeAsFrame, "Import composite image or the first  layer as a single frame"},
    {DefaultBackgroundColor, "Default Background Color"},
    {DefaultBackgroundColorNote,
     "  When a transparent picture is exported to an unsupported transparency image file,the "
     "transparent area will be filled by following color. "},
    {RecoverDocuments, "Recover Documents"},
    {RecoverNote, "The program ended before these documents were saved. They can be recovered as they were, "
                  "with everything that can be undone."},
    {Recover, "&Recover"},
    {RecoverTip, "Opens the selected documents"},
    {Discard, "&Discard"},
    {DiscardTip, "Removes the selected documents for good"},
    {RecoverLater, "&Later"},
    {RecoverLaterTip, "Keeps these documents and asks again at the next start"},
    {DiscardQuestion, "Do you want to discard the selected documents for good?"},
    {Preview, "Preview"},
    {AdjustBc, "Adjust BC"},
    {AdjustRgb, "Adjust RGB"},
    {AdjustHsl, "Adjust HSL"},
    {Blur, "Blur"},
    {GaussianBlur, "Gaussian Blur"},
    {Sharpness, "Sharpness"},
    {Emboss, "Emboss"},
    {Sunspot, "Sunspot"},
    {Rotate, "Rotate"},
    {BrightnessContrastGroup, "Brightness&&Contrast"},
    {RedGreenBlueGroup, "Red&&Green&&Blue"},
    {HueSaturationLightnessGroup, "Hue&&Saturation&&Lightness"},
    {Brightness, "Brightness:"},
    {Contrast, "Contrast:"},
    {Red, "Red:"},
    {Green, "Green:"},
    {Blue, "Blue:"},
    {Hue, "Hue:"},
    {Saturation, "Saturation:"},
    {Lightness, "Lightness:"},
    {BlurSize, "Blur:"},
    {SharpnessDegree, "Sharpness:"},
    {Elevation, "Elevation:"},
    {Weight, "Weight:"},
    {HorizontalPosition, "Horizontal pos:"},
    {VerticalPosition, "Vertical pos:"},
    {Azimuth, "Azimuth"},
    {DirectionRight, "Right"},
    {DirectionUp, "Up"},
    {DirectionLeft, "Left"},
    {DirectionDown, "Down"},
    {RotateLeft45, "Left 45 degrees"},
    {RotateRight45, "Right 45 degrees"},
    {RotateLeft90, "Left 90 degrees"},
    {RotateRight90, "Right 90 degrees"},
    {Rotate180, "180 degrees"},
    {CustomAngle, "Custom angle"},
    {Clockwise, "Clockwise:"},
    {Properties, "Properties"},
    {ObjectName, "Object name:"},
    {ObjectNameLimit, "(Limit of 48 characters)"},
    {Visible, "Visible"},
    {Location, "Location"},
    {Left, "Left:"},
    {Top, "Top:"},
    {Lock, "Lock"},
    {Dimension, "Dimension"},
    {Unit, "Unit:"},
    {PreserveObjectRatio, "Preserve ratio"},
    {About, "About %s"},
    {AboutPurpose, "A desktop editor for still and animated raster pictures."},
    {AboutLicence, "Free software under the GNU General Public License, version 3 or later."},
    {Libraries, "Libraries in use:"},
    {Library, "Library"},
    {LibraryVersion, "Version"},
    {LibraryLicence, "Licence"},
    {LibraryMissing, "not installed"},
    {AddText, "Add Text"},
    {TextFont, "&Font:"},
    {TextSize, "Si&ze:"},
    {TextBold, "Bold"},
    {TextItalic, "Italic"},
    {TextUnderline, "Underline"},
    {TextLeft, "Align text left"},
    {TextCenter, "Centre text"},
    {TextRight, "Align text right"},
    {TextLine, "&Line:"},
    {TextBaseline, "&Baseline:"},
    {TextCharacter, "Cha&racter:"},
    {TextTransparent, "&Transparent:"},
    {TextVertical, "&Vertical"},
    {SmoothEdge, "&Smooth Edge"},
    {LineSpacing, "Space between lines"},
    {CharacterSpacing, "Space between characters"},
    {BaselineShift, "How far the text is raised"},
    {TextTransparency, "Transparency of the text"},
    {FontIsMissing, "This font is not installed; another one stands in."},
    {TextIsTooLarge, "This text is too large for a picture."},
    {FillBanner, "Fill Banner"},
    {Fill, "Fill"},
    {SingleColor, "Single Color"},
    {FillMode, "Fill Mode:"},
    {GradientFirstColor, "First color of the gradient"},
    {GradientSecondColor, "Second color of the gradient"},
    {Compression, "Compression"},
    {TiffNone, "&None"},
    {TiffGroup3, "CCITT Group &3"},
    {TiffGroup4, "CCITT Group &4"},
    {TiffLzw, "&LZW"},
    {TiffDeflate, "&Deflate"},
    {TiffJpeg, "&JPEG"},
    {TiffAdobeDeflate, "&Adobe Deflate"},
    {BmpColors, "Colors"},
    {BmpBlackAndWhite, "Black && White"},
    {Bmp16Colors, "16 Colors"},
    {Bmp256Colors, "256 Colors"},
    {BmpHighColors, "High Colors"},
    {BmpTrueColors, "True Colors"},
    {Bmp16Grays, "16 Grays"},
    {Bmp256Grays, "256 Grays"},
    {TgaEncoding, "Encoding Options"},
    {TgaRle, "&Compress Using RLE"},
    {TgaBottomUp, "&Bottom-up Orientation"},
    {GifInterlace, "Interlace"},
    {JpgQuality, "Quality:"},
    {JpgQualityName, "Quality"},
    {BestCompression, "Best compression"},
    {BestQuality, "Best quality"},
    {FillColor, "Fill Color:"},
    {DefineHotSpot, "Define HotSpot:"},
    {HotSpotX, "X:"},
    {HotSpotY, "Y:"},
    {OpenPsdFile, "Open PSD File..."},
    {PsdConsistsOfLayers,
     "This PSD file consists of more than one layer. These layers can be imported as objects or the "
     "composite image can be import as a single image.Which should you choose?"},
    {Layers, "Layers"},
    {ImportCompositeAsImage, "Import composite image or the first  layer as a single image"},
    {ShowTipNextTime, "Show this tip next time"},
    {AddImageFiles, "Add Image File(s)"},
    {AddAviFile, "Add AVI"},
    {AviFilter, "Microsoft AVI Files(*.avi)"},
    {FindCommand, "Find Command"},
    {FindCommandHint, "Type parts of a command's name"},
    {FoundCommands, "Commands"},
    {NoPictureOpen, "no picture is open"},
    {NothingToUndo, "there is nothing to undo"},
    {NothingToRedo, "there is nothing to redo"},
    {NothingToPaste, "the Clipboard holds no picture"},
    {NothingSelected, "there is no selection"},
    {LargestZoom, "this is the largest zoom"},
    {SmallestZoom, "this is the smallest zoom"},
    {ActualSizeShown, "the actual size is shown"},
    {NotAvailable, "not now"},
    {HelpTitle, "%s Help"},
    {HelpContents, "Contents"},
    {HelpSearch, "Search"},
    {HelpSearchHint, "Words to look for"},
    {HelpFound, "Pages found"},
    {HelpPage, "Help page"},
    {HelpBack, "Back"},
    {HelpForward, "Forward"},
    {GeneralPage, "General"},
    {KeyboardPage, "Keyboard"},
    {FilterCommands, "Filter by name or key"},
    {CommandColumn, "Command"},
    {ShortcutColumn, "Shortcut"},
    {FirstShortcut, "&Shortcut:"},
    {SecondShortcut, "S&econd shortcut:"},
    {ShortcutTaken, " is the shortcut of \"%s\"."},
    {ShortcutReserved, "%s is needed by the canvas and by dialogs."},
    {TakeOverShortcut, "&Take It Over"},
    {ResetShortcut, "&Reset"},
    {ResetAllShortcuts, "Reset &All"},
    {ExportAnimation, "Export Animation"},
    {TimesToPlay, "&Times to play:"},
    {WithoutEnd, "Without end"},
    {DelayOfFrames, "&Delay of each frame:"},
    {HundredthsOfASecond, " / 100 s"},
    {AnimationPalette, "Palette"},
    {OnePaletteForAll, "One for &all frames"},
    {OnePalettePerFrame, "One for each f&rame"},
    {AnimationLength, "Frames: %1, seconds: %2"},
    {ShowPreview, "Previe&w"},
    {PlayAnimations, "Pla&y animations"},
    {PreviewSize, "%d x %d pixels"},
    {PreviewDepth, "%s bits per pixel"},
    {PreviewTransparent, "transparent areas"},
    {PreviewObjects, "Objects: %s"},
    {PreviewFrames, "Frames: %s"},
    {PreviewImages, "Images: %s"},
    {PreviewUnreadable, "This file cannot be read."},
    {PreviewUnknownFormat, "This is no format that can be opened."},
    {PreviewTooLong, "This file is too long for a preview."},
    {BeforeSaving, "Before"},
    {AfterSaving, "After"},
    {FileSize, "File size: %s"},
    {Computing, "..."},
    {CannotBeSaved, "This picture cannot be saved in this format."},
    {NotKept, "This file will not keep: %s."},
    {LossFrames, "the frames of the animation"},
    {LossObjects, "separate objects"},
    {LossHiddenObjects, "hidden objects"},
    {LossTransparency, "transparency"},
    {LossPartialTransparency, "partial transparency"},
    {LossHue, "colors other than gray"},
    {LossColors, "more than %s colors"},
    {LossExactColors, "the exact colors"},
    {ObjectsSimplifyLayers,
     "Objects will not keep the blending modes, clipping, adjustments or effects of these layers."},
};

constexpr bool RowsStandInOrder()
{
    for (size_t i = 0; i < std::size(kRows); ++i) {
        if (static_cast<size_t>(kRows[i].id) != i)
            return false;
    }
    return std::size(kRows) == static_cast<size_t>(Str::Count);
}
static_assert(RowsStandInOrder());

/// What has been translated so far.
struct TranslatedTexts {
    TextTranslator translate = nullptr;
    std::map<std::string, std::string, std::less<>> known;
};

TranslatedTexts& Translations()
{
    static TranslatedTexts texts;
    return texts;
}

void ReplaceFirst(std::string& text, std::string_view mark, std::string_view value)
{
    const size_t at = text.find(mark);
    if (at != std::string::npos)
        text.replace(at, mark.size(), value);
}

} // namespace

void SetTextTranslator(TextTranslator translator)
{
    Translations() = {translator, {}};
}

std::string_view SourceText(Str id)
{
    return kRows[static_cast<size_t>(id)].text;
}

std::string_view Text(Str id)
{
    return Translated(SourceText(id));
}

std::string_view Translated(std::string_view source)
{
    TranslatedTexts& texts = Translations();
    if (texts.translate == nullptr || source.empty())
        return source;
    auto known = texts.known.find(source);
    if (known == texts.known.end())
        known = texts.known.emplace(source, texts.translate(source)).first;
    return known->second;
}

std::string Text(Str id, std::string_view argument)
{
    std::string text(Text(id));
    ReplaceFirst(text, "%s", argument);
    return text;
}

std::string Text(Str id, int first, int second)
{
    std::string text(Text(id));
    ReplaceFirst(text, "%d", std::to_string(first));
    ReplaceFirst(text, "%d", std::to_string(second));
    return text;
}
