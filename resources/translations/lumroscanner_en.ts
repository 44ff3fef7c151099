<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en_US">
<context>
    <name>AssistControl</name>
    <message>
        <source>The second camera was disconnected.</source>
        <translation>The second camera was disconnected.</translation>
    </message>
    <message>
        <source>Tips</source>
        <translation>Tips</translation>
    </message>
    <message>
        <source>Please turn off the deskew function before using it again!</source>
        <translation>Please turn off the deskew function before using it again!</translation>
    </message>
    <message>
        <source>There is no second camera.</source>
        <translation>There is no second camera.</translation>
    </message>
    <message>
        <source>The second camera cannot be opened.</source>
        <translation>The second camera cannot be opened.</translation>
    </message>
    <message>
        <source>Not in the captures: &quot;Composite photo&quot; is off.</source>
        <translation>Not in the captures: &quot;Composite photo&quot; is off.</translation>
    </message>
</context>
<context>
    <name>AutoScan</name>
    <message>
        <source>Pages taken:</source>
        <translation>Pages taken:</translation>
    </message>
    <message>
        <source>Lay the next page under the camera.</source>
        <translation>Lay the next page under the camera.</translation>
    </message>
    <message>
        <source>Pictures taken:</source>
        <translation>Pictures taken:</translation>
    </message>
    <message>
        <source>Seconds to the next picture:</source>
        <translation>Seconds to the next picture:</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Progress</translation>
    </message>
</context>
<context>
    <name>BarCode</name>
    <message>
        <source>Contents of the codes</source>
        <translation>Contents of the codes</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Codes</source>
        <translation>Codes</translation>
    </message>
</context>
<context>
    <name>BarcodeScan</name>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>The camera delivers no picture.</translation>
    </message>
    <message>
        <source>No code was found.</source>
        <translation>No code was found.</translation>
    </message>
    <message>
        <source>The codes are still being read.</source>
        <translation>The codes are still being read.</translation>
    </message>
    <message>
        <source>The codes are being read.</source>
        <translation>The codes are being read.</translation>
    </message>
    <message>
        <source>Reading the codes was cancelled. The picture itself is saved.</source>
        <translation>Reading the codes was cancelled. The picture itself is saved.</translation>
    </message>
</context>
<context>
    <name>BookScan</name>
    <message>
        <source>This device does not support this feature!</source>
        <translation>This device does not support this feature!</translation>
    </message>
    <message>
        <source>Please turn on the book-line first!</source>
        <translation>Please turn on the book-line first!</translation>
    </message>
    <message>
        <source>The book is still being flattened.</source>
        <translation>The book is still being flattened.</translation>
    </message>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>The camera delivers no picture.</translation>
    </message>
    <message>
        <source>The book is being flattened.</source>
        <translation>The book is being flattened.</translation>
    </message>
    <message>
        <source>The flattening was cancelled. The picture itself is saved.</source>
        <translation>The flattening was cancelled. The picture itself is saved.</translation>
    </message>
    <message>
        <source>Book flat failed!</source>
        <translation>Book flat failed!</translation>
    </message>
    <message>
        <source>A page of the book could not be saved. Please check the folder of the pictures.</source>
        <translation>A page of the book could not be saved. Please check the folder of the pictures.</translation>
    </message>
</context>
<context>
    <name>BtnControl</name>
    <message>
        <source>More functions</source>
        <translation>More functions</translation>
    </message>
    <message>
        <source>PDF of picture files...</source>
        <translation>PDF of picture files...</translation>
    </message>
    <message>
        <source>Hold down or right-click: PDF of picture files, text, PDF/A</source>
        <translation>Hold down or right-click: PDF of picture files, text, PDF/A</translation>
    </message>
    <message>
        <source>With text</source>
        <translation>With text</translation>
    </message>
    <message>
        <source>PDF/A-2b</source>
        <translation>PDF/A-2b</translation>
    </message>
</context>
<context>
    <name>CardComposition</name>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>The camera delivers no picture.</translation>
    </message>
    <message>
        <source>The picture cannot be read back. Please try again.</source>
        <translation>The picture cannot be read back. Please try again.</translation>
    </message>
    <message>
        <source>The first picture is taken. Lay the second side under the camera and press the button again.</source>
        <translation>The first picture is taken. Lay the second side under the camera and press the button again.</translation>
    </message>
    <message>
        <source>The merge was given up. The first picture stays in the list.</source>
        <translation>The merge was given up. The first picture stays in the list.</translation>
    </message>
</context>
<context>
    <name>CompositeCapture</name>
    <message>
        <source>Tips</source>
        <translation>Tips</translation>
    </message>
    <message>
        <source>Please turn off deskew before using composite photo feature again</source>
        <translation>Please turn off deskew before using composite photo feature again</translation>
    </message>
    <message>
        <source>One of the cameras delivers no picture.</source>
        <translation>One of the cameras delivers no picture.</translation>
    </message>
</context>
<context>
    <name>ConfigSet</name>
    <message>
        <source>Setting</source>
        <translation>Setting</translation>
    </message>
    <message>
        <source>&amp;Global</source>
        <translation>&amp;Global</translation>
    </message>
    <message>
        <source>&amp;Image</source>
        <translation>&amp;Image</translation>
    </message>
    <message>
        <source>Co&amp;ntinuous shooting</source>
        <translation>Co&amp;ntinuous shooting</translation>
    </message>
    <message>
        <source>&amp;Shortcuts</source>
        <translation>&amp;Shortcuts</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;About</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Close</translation>
    </message>
</context>
<context>
    <name>ControlOverlay</name>
    <message>
        <source>Camera controls</source>
        <translation>Camera controls</translation>
    </message>
</context>
<context>
    <name>ControlPanel</name>
    <message>
        <source>Camera controls</source>
        <translation>Camera controls</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Focus</source>
        <translation>Focus</translation>
    </message>
    <message>
        <source>Exposure</source>
        <translation>Exposure</translation>
    </message>
    <message>
        <source>Gain</source>
        <translation>Gain</translation>
    </message>
    <message>
        <source>White balance</source>
        <translation>White balance</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>Brightness</translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation>Contrast</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>Saturation</translation>
    </message>
    <message>
        <source>Sharpness</source>
        <translation>Sharpness</translation>
    </message>
    <message>
        <source>Backlight</source>
        <translation>Backlight</translation>
    </message>
    <message>
        <source>Anti-flicker</source>
        <translation>Anti-flicker</translation>
    </message>
    <message>
        <source>As delivered</source>
        <translation>As delivered</translation>
    </message>
    <message>
        <source>Puts everything back to how the camera was delivered</source>
        <translation>Puts everything back to how the camera was delivered</translation>
    </message>
    <message>
        <source>No camera is open.</source>
        <translation>No camera is open.</translation>
    </message>
    <message>
        <source>This camera offers nothing that can be set.</source>
        <translation>This camera offers nothing that can be set.</translation>
    </message>
    <message>
        <source>A click on the picture focuses there.</source>
        <translation>A click on the picture focuses there.</translation>
    </message>
</context>
<context>
    <name>ControlRow</name>
    <message>
        <source>Automatic</source>
        <translation>Automatic</translation>
    </message>
    <message>
        <source>%1, automatic</source>
        <translation>%1, automatic</translation>
    </message>
    <message>
        <source>Double click or Delete: as delivered (%1)</source>
        <translation>Double click or Delete: as delivered (%1)</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Off</translation>
    </message>
    <message>
        <source>50 Hz</source>
        <translation>50 Hz</translation>
    </message>
    <message>
        <source>60 Hz</source>
        <translation>60 Hz</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 ms</translation>
    </message>
    <message>
        <source>%1 K</source>
        <translation>%1 K</translation>
    </message>
</context>
<context>
    <name>CropDialog</name>
    <message>
        <source>Crop</source>
        <translation>Crop</translation>
    </message>
    <message>
        <source>Whole picture</source>
        <translation>Whole picture</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>CropView</name>
    <message>
        <source>Picture with the corners of the page</source>
        <translation>Picture with the corners of the page</translation>
    </message>
    <message>
        <source>Upper left corner</source>
        <translation>Upper left corner</translation>
    </message>
    <message>
        <source>Upper right corner</source>
        <translation>Upper right corner</translation>
    </message>
    <message>
        <source>Lower right corner</source>
        <translation>Lower right corner</translation>
    </message>
    <message>
        <source>Lower left corner</source>
        <translation>Lower left corner</translation>
    </message>
    <message>
        <source>The picture is being read...</source>
        <translation>The picture is being read...</translation>
    </message>
</context>
<context>
    <name>DeviceControl</name>
    <message>
        <source>No found device!</source>
        <translation>No found device!</translation>
    </message>
    <message>
        <source>Device create failed!</source>
        <translation>Device create failed!</translation>
    </message>
    <message>
        <source>Waring</source>
        <translation>Waring</translation>
    </message>
    <message>
        <source>video create failed!</source>
        <translation>video create failed!</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>The camera was disconnected.</source>
        <translation>The camera was disconnected.</translation>
    </message>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>The camera delivers no picture.</translation>
    </message>
    <message>
        <source>No document camera is connected. Another one can be chosen above.</source>
        <translation>No document camera is connected. Another one can be chosen above.</translation>
    </message>
    <message>
        <source>Waiting for permission to use %1...</source>
        <translation>Waiting for permission to use %1...</translation>
    </message>
    <message>
        <source>%1 is in use by another program. Waiting until it is free...</source>
        <translation>%1 is in use by another program. Waiting until it is free...</translation>
    </message>
    <message>
        <source>%1 does not start. Trying again...</source>
        <translation>%1 does not start. Trying again...</translation>
    </message>
</context>
<context>
    <name>EntryBar</name>
    <message>
        <source>Change the file</source>
        <translation>Change the file</translation>
    </message>
    <message>
        <source>Rename (F2)</source>
        <translation>Rename (F2)</translation>
    </message>
    <message>
        <source>Turn left (Shift+R)</source>
        <translation>Turn left (Shift+R)</translation>
    </message>
    <message>
        <source>Turn right (R)</source>
        <translation>Turn right (R)</translation>
    </message>
    <message>
        <source>Crop (C)</source>
        <translation>Crop (C)</translation>
    </message>
    <message>
        <source>Set straight (S)</source>
        <translation>Set straight (S)</translation>
    </message>
    <message>
        <source>Undo (Ctrl+Z)</source>
        <translation>Undo (Ctrl+Z)</translation>
    </message>
</context>
<context>
    <name>EntryName</name>
    <message>
        <source>New name</source>
        <translation>New name</translation>
    </message>
</context>
<context>
    <name>FaceVerify</name>
    <message>
        <source>Live picture of the face</source>
        <translation>Live picture of the face</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Result</translation>
    </message>
    <message>
        <source>ReadCard</source>
        <translation>ReadCard</translation>
    </message>
    <message>
        <source>Scanner</source>
        <translation>Scanner</translation>
    </message>
    <message>
        <source>Verify</source>
        <translation>Verify</translation>
    </message>
    <message>
        <source>Live-Face</source>
        <translation>Live-Face</translation>
    </message>
    <message>
        <source>One-Click-Verify</source>
        <translation>One-Click-Verify</translation>
    </message>
    <message>
        <source>Portrait of the card</source>
        <translation>Portrait of the card</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>Gender:</source>
        <translation>Gender:</translation>
    </message>
    <message>
        <source>Nation:</source>
        <translation>Nation:</translation>
    </message>
    <message>
        <source>Born:</source>
        <translation>Born:</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>Year</translation>
    </message>
    <message>
        <source>Mon</source>
        <translation>Mon</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>Day</translation>
    </message>
    <message>
        <source>Address:</source>
        <translation>Address:</translation>
    </message>
    <message>
        <source>Number:</source>
        <translation>Number:</translation>
    </message>
    <message>
        <source>Department:</source>
        <translation>Department:</translation>
    </message>
    <message>
        <source>Valid Period:</source>
        <translation>Valid Period:</translation>
    </message>
    <message>
        <source>Face Verify</source>
        <translation>Face Verify</translation>
    </message>
    <message>
        <source>The face camera was disconnected.</source>
        <translation>The face camera was disconnected.</translation>
    </message>
    <message>
        <source>Init IDCard failed,this device may not support this feature!</source>
        <translation>Init IDCard failed,this device may not support this feature!</translation>
    </message>
    <message>
        <source>There is no face camera.</source>
        <translation>There is no face camera.</translation>
    </message>
    <message>
        <source>The face camera cannot be opened. It may be in use.</source>
        <translation>The face camera cannot be opened. It may be in use.</translation>
    </message>
    <message>
        <source>Waiting for a picture of the face...</source>
        <translation>Waiting for a picture of the face...</translation>
    </message>
    <message>
        <source>There is no new picture of the face.</source>
        <translation>There is no new picture of the face.</translation>
    </message>
    <message>
        <source>The picture was taken.</source>
        <translation>The picture was taken.</translation>
    </message>
    <message>
        <source>Reading the card...</source>
        <translation>Reading the card...</translation>
    </message>
    <message>
        <source>Read idcard failed!</source>
        <translation>Read idcard failed!</translation>
    </message>
    <message>
        <source>ID card info is empty.</source>
        <translation>ID card info is empty.</translation>
    </message>
    <message>
        <source>The face library cannot be used on this computer!</source>
        <translation>The face library cannot be used on this computer!</translation>
    </message>
    <message>
        <source>Comparing the faces...</source>
        <translation>Comparing the faces...</translation>
    </message>
    <message>
        <source>Face comparison failed, score:%1</source>
        <translation>Face comparison failed, score:%1</translation>
    </message>
    <message>
        <source>Face comparison success, score:%1</source>
        <translation>Face comparison success, score:%1</translation>
    </message>
    <message>
        <source>No card has been read.</source>
        <translation>No card has been read.</translation>
    </message>
    <message>
        <source>Looking at the face...</source>
        <translation>Looking at the face...</translation>
    </message>
    <message>
        <source>This is not a living face.</source>
        <translation>This is not a living face.</translation>
    </message>
    <message>
        <source>This is a living face.</source>
        <translation>This is a living face.</translation>
    </message>
    <message>
        <source>Please confirm that your ID card is in the card reading position, your face is in the center of the video screen, and then click the confirm button</source>
        <translation>Please confirm that your ID card is in the card reading position, your face is in the center of the video screen, and then click the confirm button</translation>
    </message>
</context>
<context>
    <name>FignerPrint</name>
    <message>
        <source>Fingerprint</source>
        <translation>Fingerprint</translation>
    </message>
    <message>
        <source>Take fingerprint</source>
        <translation>Take fingerprint</translation>
    </message>
    <message>
        <source>Change mode</source>
        <translation>Change mode</translation>
    </message>
    <message>
        <source>FingerPrint</source>
        <translation>FingerPrint</translation>
    </message>
    <message>
        <source>Open FP device failed</source>
        <translation>Open FP device failed</translation>
    </message>
    <message>
        <source>Please put your finger on it</source>
        <translation>Please put your finger on it</translation>
    </message>
    <message>
        <source>Get FP data Success</source>
        <translation>Get FP data Success</translation>
    </message>
    <message>
        <source>Read FP data timeout</source>
        <translation>Read FP data timeout</translation>
    </message>
    <message>
        <source>The sensor does not answer any more.</source>
        <translation>The sensor does not answer any more.</translation>
    </message>
    <message>
        <source>The picture could not be saved. Please check the folder %1.</source>
        <translation>The picture could not be saved. Please check the folder %1.</translation>
    </message>
    <message>
        <source>The mode stays as it is.</source>
        <translation>The mode stays as it is.</translation>
    </message>
    <message>
        <source>Mode %1 holds from the next start on.</source>
        <translation>Mode %1 holds from the next start on.</translation>
    </message>
</context>
<context>
    <name>FileHandover</name>
    <message>
        <source>No program opens %1.</source>
        <translation>No program opens %1.</translation>
    </message>
    <message>
        <source>The folder %1 could not be opened.</source>
        <translation>The folder %1 could not be opened.</translation>
    </message>
    <message>
        <source>Only pictures can be printed.</source>
        <translation>Only pictures can be printed.</translation>
    </message>
    <message>
        <source>The picture could not be printed.</source>
        <translation>The picture could not be printed.</translation>
    </message>
</context>
<context>
    <name>FirstSide</name>
    <message>
        <source>First side</source>
        <translation>First side</translation>
    </message>
    <message>
        <source>Give up the merge</source>
        <translation>Give up the merge</translation>
    </message>
    <message>
        <source>Give up the merge (Esc)</source>
        <translation>Give up the merge (Esc)</translation>
    </message>
</context>
<context>
    <name>FrozenBar</name>
    <message>
        <source>Save the frozen picture</source>
        <translation>Save the frozen picture</translation>
    </message>
    <message>
        <source>Frozen. Captures save the live page.</source>
        <translation>Frozen. Captures save the live page.</translation>
    </message>
</context>
<context>
    <name>FunctionButtons</name>
    <message>
        <source>Capture</source>
        <translation>Capture</translation>
    </message>
    <message>
        <source>Document</source>
        <translation>Document</translation>
    </message>
    <message>
        <source>Barcode</source>
        <translation>Barcode</translation>
    </message>
    <message>
        <source>Merge images</source>
        <translation>Merge images</translation>
    </message>
    <message>
        <source>Merge card</source>
        <translation>Merge card</translation>
    </message>
    <message>
        <source>Record video</source>
        <translation>Record video</translation>
    </message>
    <message>
        <source>Continuous shooting</source>
        <translation>Continuous shooting</translation>
    </message>
    <message>
        <source>Recognize text (OCR)</source>
        <translation>Recognize text (OCR)</translation>
    </message>
    <message>
        <source>Read ID card</source>
        <translation>Read ID card</translation>
    </message>
    <message>
        <source>Print receipt</source>
        <translation>Print receipt</translation>
    </message>
    <message>
        <source>Make PDF</source>
        <translation>Make PDF</translation>
    </message>
    <message>
        <source>Multi-page PDF</source>
        <translation>Multi-page PDF</translation>
    </message>
    <message>
        <source>Sign</source>
        <translation>Sign</translation>
    </message>
    <message>
        <source>Fingerprint</source>
        <translation>Fingerprint</translation>
    </message>
    <message>
        <source>Scan book</source>
        <translation>Scan book</translation>
    </message>
    <message>
        <source>Verify face</source>
        <translation>Verify face</translation>
    </message>
    <message>
        <source>Burn-in test</source>
        <translation>Burn-in test</translation>
    </message>
</context>
<context>
    <name>IdCardReader</name>
    <message>
        <source>IDCard Read System</source>
        <translation>IDCard Read System</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>Front</translation>
    </message>
    <message>
        <source>Name</source>
        <comment>of a person</comment>
        <translation>Name</translation>
    </message>
    <message>
        <source>Gender</source>
        <translation>Gender</translation>
    </message>
    <message>
        <source>Nation</source>
        <translation>Nation</translation>
    </message>
    <message>
        <source>Born</source>
        <translation>Born</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>Year</translation>
    </message>
    <message>
        <source>Mon</source>
        <translation>Mon</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>Day</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Address</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Number</translation>
    </message>
    <message>
        <source>Opposite</source>
        <translation>Opposite</translation>
    </message>
    <message>
        <source>Department</source>
        <translation>Department</translation>
    </message>
    <message>
        <source>Valid Period</source>
        <translation>Valid Period</translation>
    </message>
    <message>
        <source>Path</source>
        <translation>Path</translation>
    </message>
    <message>
        <source>Tip:</source>
        <translation>Tip:</translation>
    </message>
    <message>
        <source>Browse</source>
        <translation>Browse</translation>
    </message>
    <message>
        <source>Read</source>
        <translation>Read</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>Read2</source>
        <translation>Read2</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>ID Card Reader</source>
        <translation>ID Card Reader</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Init IDCard failed!</source>
        <translation>Init IDCard failed!</translation>
    </message>
    <message>
        <source>Please select the save path</source>
        <translation>Please select the save path</translation>
    </message>
    <message>
        <source>Reading the card ...</source>
        <translation>Reading the card ...</translation>
    </message>
    <message>
        <source>No card reader is attached.</source>
        <translation>No card reader is attached.</translation>
    </message>
    <message>
        <source>The card could not be read. Please lift it and lay it on again.</source>
        <translation>The card could not be read. Please lift it and lay it on again.</translation>
    </message>
    <message>
        <source>The card has been read. Please lay on the next one.</source>
        <translation>The card has been read. Please lay on the next one.</translation>
    </message>
    <message>
        <source>Please lay a card on the reader.</source>
        <translation>Please lay a card on the reader.</translation>
    </message>
    <message>
        <source>Please lay a card on the reader and press &quot;Read&quot;.</source>
        <translation>Please lay a card on the reader and press &quot;Read&quot;.</translation>
    </message>
    <message>
        <source>The card has been saved.</source>
        <translation>The card has been saved.</translation>
    </message>
    <message>
        <source>The portrait could not be saved.</source>
        <translation>The portrait could not be saved.</translation>
    </message>
    <message>
        <source>The card could not be saved. Please check the file.</source>
        <translation>The card could not be saved. Please check the file.</translation>
    </message>
</context>
<context>
    <name>ImageMerge</name>
    <message>
        <source>Image Merge</source>
        <translation>Image Merge</translation>
    </message>
    <message>
        <source>Left-Right Merge</source>
        <translation>Left-Right Merge</translation>
    </message>
    <message>
        <source>Up-Down Merge</source>
        <translation>Up-Down Merge</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Space</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Merge Images failed!</source>
        <translation>Merge Images failed!</translation>
    </message>
    <message>
        <source>There is no picture to save.</source>
        <translation>There is no picture to save.</translation>
    </message>
    <message>
        <source>The merged picture has not been saved. Close without saving it?</source>
        <translation>The merged picture has not been saved. Close without saving it?</translation>
    </message>
</context>
<context>
    <name>JobBar</name>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Page %1 of %2</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Being cancelled...</source>
        <translation>Being cancelled...</translation>
    </message>
</context>
<context>
    <name>LumroScanner</name>
    <message>
        <source>Lumro TRVS</source>
        <translation>Lumro TRVS</translation>
    </message>
    <message>
        <source>Lumro TRVS 2.1</source>
        <translation>Lumro TRVS 2.1</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>Tips</source>
        <translation>Tips</translation>
    </message>
    <message>
        <source>Restart the software to take effect!</source>
        <translation>Restart the software to take effect!</translation>
    </message>
    <message>
        <source>The program is already running.</source>
        <translation>The program is already running.</translation>
    </message>
</context>
<context>
    <name>MainDesk</name>
    <message>
        <source>Please complete the image merge first!</source>
        <translation>Please complete the image merge first!</translation>
    </message>
    <message>
        <source>%1 of %2 pages could not be saved. Please check the folder %3.</source>
        <translation>%1 of %2 pages could not be saved. Please check the folder %3.</translation>
    </message>
    <message>
        <source>The picture could not be saved. Please check the folder %1.</source>
        <translation>The picture could not be saved. Please check the folder %1.</translation>
    </message>
    <message>
        <source>No found device!</source>
        <translation>No found device!</translation>
    </message>
</context>
<context>
    <name>More</name>
    <message>
        <source>More</source>
        <translation>More</translation>
    </message>
    <message>
        <source>Select:</source>
        <translation>Select:</translation>
    </message>
</context>
<context>
    <name>MoveVideoView</name>
    <message>
        <source>Please waiting...</source>
        <translation>Please waiting...</translation>
    </message>
</context>
<context>
    <name>MoveVideoWidget</name>
    <message>
        <source>Second camera</source>
        <translation>Second camera</translation>
    </message>
</context>
<context>
    <name>MsgBox</name>
    <message>
        <source>MsgBox</source>
        <translation>MsgBox</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>warnning</source>
        <translation>warnning</translation>
    </message>
    <message>
        <source>error</source>
        <translation>error</translation>
    </message>
    <message>
        <source>Question</source>
        <translation>Question</translation>
    </message>
</context>
<context>
    <name>NamedFiles</name>
    <message numerus="yes">
        <source>%1 and %n more</source>
        <translation>
            <numerusform>%1 and %n more</numerusform>
            <numerusform>%1 and %n more</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>PdfEx</name>
    <message>
        <source>PDFEX</source>
        <translation>PDFEX</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>Manual</translation>
    </message>
    <message>
        <source>AddImages</source>
        <translation>AddImages</translation>
    </message>
    <message>
        <source>Scanner</source>
        <translation>Scanner</translation>
    </message>
    <message>
        <source>Open-path</source>
        <translation>Open-path</translation>
    </message>
    <message>
        <source>Pdf</source>
        <translation>Pdf</translation>
    </message>
    <message>
        <source>Image files(*.jpg *.png *.bmp)</source>
        <translation>Image files(*.jpg *.png *.bmp)</translation>
    </message>
    <message>
        <source>There are no pages yet.</source>
        <translation>There are no pages yet.</translation>
    </message>
    <message>
        <source>The PDF is being written...</source>
        <translation>The PDF is being written...</translation>
    </message>
    <message>
        <source>Not in the PDF: %1. Only files whose names end in jpg, jpeg or png, in small letters, become pages.</source>
        <translation>Not in the PDF: %1. Only files whose names end in jpg, jpeg or png, in small letters, become pages.</translation>
    </message>
    <message>
        <source>No PDF was written, because this cannot be read: %1. Take it out of the list or put it right, then try again.</source>
        <translation>No PDF was written, because this cannot be read: %1. Take it out of the list or put it right, then try again.</translation>
    </message>
    <message>
        <source>The PDF could not be written. The pages stay in the list. Please check the folder.</source>
        <translation>The PDF could not be written. The pages stay in the list. Please check the folder.</translation>
    </message>
    <message>
        <source>The PDF is written.</source>
        <translation>The PDF is written.</translation>
    </message>
    <message>
        <source>The list of pages is not in a PDF yet. Close and give up the list? The picture files stay.</source>
        <translation>The list of pages is not in a PDF yet. Close and give up the list? The picture files stay.</translation>
    </message>
    <message>
        <source>Cancelled: no PDF was written. The pages stay in the list.</source>
        <translation>Cancelled: no PDF was written. The pages stay in the list.</translation>
    </message>
    <message>
        <source>With text</source>
        <translation>With text</translation>
    </message>
    <message>
        <source>The recognised text lies invisibly over the pictures: the PDF can be searched and its words copied.</source>
        <translation>The recognised text lies invisibly over the pictures: the PDF can be searched and its words copied.</translation>
    </message>
    <message>
        <source>PDF/A-2b</source>
        <translation>PDF/A-2b</translation>
    </message>
    <message>
        <source>The form of PDF for archives: everything needed to show it is in the file.</source>
        <translation>The form of PDF for archives: everything needed to show it is in the file.</translation>
    </message>
</context>
<context>
    <name>PdfExControl</name>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>The camera delivers no picture.</translation>
    </message>
    <message>
        <source>The picture could not be saved.</source>
        <translation>The picture could not be saved.</translation>
    </message>
</context>
<context>
    <name>PdfScan</name>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>The camera delivers no picture.</translation>
    </message>
    <message>
        <source>The PDF could not be made. The picture itself is saved.</source>
        <translation>The PDF could not be made. The picture itself is saved.</translation>
    </message>
</context>
<context>
    <name>PdfSynthesis</name>
    <message>
        <source>Image files(*.jpg *.png *.bmp)</source>
        <translation>Image files(*.jpg *.png *.bmp)</translation>
    </message>
    <message>
        <source>Save PDF path</source>
        <translation>Save PDF path</translation>
    </message>
    <message>
        <source>PDF(*.pdf)</source>
        <translation>PDF(*.pdf)</translation>
    </message>
    <message>
        <source>The PDF could not be written.</source>
        <translation>The PDF could not be written.</translation>
    </message>
    <message>
        <source>Tip</source>
        <translation>Tip</translation>
    </message>
    <message>
        <source>PDF</source>
        <translation>PDF</translation>
    </message>
    <message>
        <source>Do you want to open the PDF directory?</source>
        <translation>Do you want to open the PDF directory?</translation>
    </message>
    <message>
        <source>Open PDF directory</source>
        <translation>Open PDF directory</translation>
    </message>
    <message>
        <source>Finish</source>
        <translation>Finish</translation>
    </message>
    <message>
        <source>%1 could not be read. No PDF was made.</source>
        <translation>%1 could not be read. No PDF was made.</translation>
    </message>
    <message>
        <source>%1 could not be read. The PDF holds the pages before it.</source>
        <translation>%1 could not be read. The PDF holds the pages before it.</translation>
    </message>
    <message>
        <source>A PDF is still being written.</source>
        <translation>A PDF is still being written.</translation>
    </message>
    <message>
        <source>The PDF is being written...</source>
        <translation>The PDF is being written...</translation>
    </message>
    <message>
        <source>Cancelled: no PDF was written.</source>
        <translation>Cancelled: no PDF was written.</translation>
    </message>
</context>
<context>
    <name>PdfTexts</name>
    <message>
        <source>The text of the PDF is being recognised.</source>
        <translation>The text of the PDF is being recognised.</translation>
    </message>
    <message>
        <source>No text was found in the PDF. It stays as it is.</source>
        <translation>No text was found in the PDF. It stays as it is.</translation>
    </message>
    <message>
        <source>Cancelled: the PDF stays without text.</source>
        <translation>Cancelled: the PDF stays without text.</translation>
    </message>
    <message>
        <source>The text could not be recognised. The PDF stays without text.</source>
        <translation>The text could not be recognised. The PDF stays without text.</translation>
    </message>
    <message>
        <source>The PDF or its pictures were changed meanwhile. It stays without text.</source>
        <translation>The PDF or its pictures were changed meanwhile. It stays without text.</translation>
    </message>
    <message>
        <source>The text could not be written. The PDF stays without text.</source>
        <translation>The text could not be written. The PDF stays without text.</translation>
    </message>
</context>
<context>
    <name>PdfView</name>
    <message>
        <source>The picture stands still: the camera delivers no new one.</source>
        <translation>The picture stands still: the camera delivers no new one.</translation>
    </message>
</context>
<context>
    <name>PictureEdits</name>
    <message>
        <source>%1 is straight already.</source>
        <translation>%1 is straight already.</translation>
    </message>
    <message>
        <source>%1 could not be changed.</source>
        <translation>%1 could not be changed.</translation>
    </message>
    <message>
        <source>%1 was changed by another program meanwhile and stays so.</source>
        <translation>%1 was changed by another program meanwhile and stays so.</translation>
    </message>
    <message>
        <source>A file needs a name.</source>
        <translation>A file needs a name.</translation>
    </message>
    <message>
        <source>A name may not begin with a dot or contain a slash.</source>
        <translation>A name may not begin with a dot or contain a slash.</translation>
    </message>
    <message>
        <source>There is already a file of the name %1.</source>
        <translation>There is already a file of the name %1.</translation>
    </message>
    <message>
        <source>%1 could not be renamed.</source>
        <translation>%1 could not be renamed.</translation>
    </message>
</context>
<context>
    <name>PrinterWidget</name>
    <message>
        <source>Printers</source>
        <translation>Printers</translation>
    </message>
    <message>
        <source>Text to print</source>
        <translation>Text to print</translation>
    </message>
    <message>
        <source>Size of the letters</source>
        <translation>Size of the letters</translation>
    </message>
    <message>
        <source>Printing...</source>
        <translation>Printing...</translation>
    </message>
    <message>
        <source>选择打印图片</source>
        <translation>Choose a picture to print</translation>
    </message>
    <message>
        <source>Images (*.jpg *.bmp *.png)</source>
        <translation>Images (*.jpg *.bmp *.png)</translation>
    </message>
    <message>
        <source>The picture cannot be read.</source>
        <translation>The picture cannot be read.</translation>
    </message>
    <message>
        <source>The picture is too high for its width: it would need more than 8 m of paper.</source>
        <translation>The picture is too high for its width: it would need more than 8 m of paper.</translation>
    </message>
</context>
<context>
    <name>RecordControl</name>
    <message>
        <source>Tips</source>
        <translation>Tips</translation>
    </message>
    <message>
        <source>Recording stopped, please adjust the resolution to 1600 * 1200</source>
        <translation>Recording stopped, please adjust the resolution to 1600 * 1200</translation>
    </message>
    <message>
        <source>The video could not be recorded.</source>
        <translation>The video could not be recorded.</translation>
    </message>
    <message>
        <source>The recording goes on. The video button shows its window again.</source>
        <translation>The recording goes on. The video button shows its window again.</translation>
    </message>
    <message>
        <source>Nothing was recorded: the camera delivered no picture.</source>
        <translation>Nothing was recorded: the camera delivered no picture.</translation>
    </message>
    <message>
        <source>The camera delivers no picture. The recording has ended; the video until then is saved.</source>
        <translation>The camera delivers no picture. The recording has ended; the video until then is saved.</translation>
    </message>
    <message>
        <source>The disk is full or cannot be written. The recording has ended; the video until then is saved.</source>
        <translation>The disk is full or cannot be written. The recording has ended; the video until then is saved.</translation>
    </message>
    <message>
        <source>The video encoder failed. The recording has ended; the video until then is saved.</source>
        <translation>The video encoder failed. The recording has ended; the video until then is saved.</translation>
    </message>
    <message>
        <source>The camera delivers no picture; the video shows the last one.</source>
        <translation>The camera delivers no picture; the video shows the last one.</translation>
    </message>
    <message>
        <source>The video could not be recorded. Please check the folder %1.</source>
        <translation>The video could not be recorded. Please check the folder %1.</translation>
    </message>
    <message>
        <source>The picture of this camera is too large for a film: choose at most 1600 x 1200.</source>
        <translation>The picture of this camera is too large for a film: choose at most 1600 x 1200.</translation>
    </message>
    <message>
        <source>Record at %1 x %2</source>
        <translation>Record at %1 x %2</translation>
    </message>
    <message>
        <source>The video is saved. It is being put into a form that plays everywhere at once.</source>
        <translation>The video is saved. It is being put into a form that plays everywhere at once.</translation>
    </message>
    <message>
        <source>Cancelled. The video is saved and plays as it is.</source>
        <translation>Cancelled. The video is saved and plays as it is.</translation>
    </message>
</context>
<context>
    <name>RecordingMark</name>
    <message>
        <source>Recording, %1</source>
        <translation>Recording, %1</translation>
    </message>
</context>
<context>
    <name>ScanControl</name>
    <message>
        <source>Auto Scan</source>
        <translation>Auto Scan</translation>
    </message>
    <message>
        <source>Timer Scan</source>
        <translation>Timer Scan</translation>
    </message>
</context>
<context>
    <name>ScanModes</name>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>The camera delivers no picture.</translation>
    </message>
</context>
<context>
    <name>SetAbout</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Lumro High Speed Portable Scanner</source>
        <translation>Lumro High Speed Portable Scanner</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
</context>
<context>
    <name>SetAutoPage</name>
    <message>
        <source>Continuous shooting</source>
        <translation>Continuous shooting</translation>
    </message>
    <message>
        <source>AutoScan</source>
        <translation>AutoScan</translation>
    </message>
    <message>
        <source>Takes a picture when a new page lies still.</source>
        <translation>Takes a picture when a new page lies still.</translation>
    </message>
    <message>
        <source>TimerScan</source>
        <translation>TimerScan</translation>
    </message>
    <message>
        <source>Takes a picture at equal intervals.</source>
        <translation>Takes a picture at equal intervals.</translation>
    </message>
    <message>
        <source>Interval in seconds</source>
        <translation>Interval in seconds</translation>
    </message>
</context>
<context>
    <name>SetGlobal</name>
    <message>
        <source>Naming Rules</source>
        <translation>Naming Rules</translation>
    </message>
    <message>
        <source>Custom + serial number</source>
        <translation>Custom + serial number</translation>
    </message>
    <message>
        <source>Name prefix:</source>
        <translation>Name prefix:</translation>
    </message>
    <message>
        <source>001.jpg</source>
        <translation>001.jpg</translation>
    </message>
    <message>
        <source>Date + Time</source>
        <translation>Date + Time</translation>
    </message>
    <message>
        <source>20230101_time</source>
        <translation>20230101_time</translation>
    </message>
    <message>
        <source>Create dir by date</source>
        <translation>Create dir by date</translation>
    </message>
    <message>
        <source>Scan Type</source>
        <translation>Scan Type</translation>
    </message>
    <message>
        <source>Original</source>
        <translation>Original</translation>
    </message>
    <message>
        <source>Remove background color</source>
        <translation>Remove background color</translation>
    </message>
    <message>
        <source>Binary</source>
        <translation>Binary</translation>
    </message>
    <message>
        <source>Enhance Color</source>
        <translation>Enhance Color</translation>
    </message>
    <message>
        <source>Seal strengthen(Red)</source>
        <translation>Seal strengthen(Red)</translation>
    </message>
    <message>
        <source>Seal strengthen(Blue)</source>
        <translation>Seal strengthen(Blue)</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>As the system</source>
        <translation>As the system</translation>
    </message>
    <message>
        <source>Words that may be misread stand on yellow in the document, so that they can be checked.</source>
        <translation>Words that may be misread stand on yellow in the document, so that they can be checked.</translation>
    </message>
    <message>
        <source>Highlight doubtful words in recognised text</source>
        <translation>Highlight doubtful words in recognised text</translation>
    </message>
</context>
<context>
    <name>SetImage</name>
    <message>
        <source>Image Path</source>
        <translation>Image Path</translation>
    </message>
    <message>
        <source>Select Directory</source>
        <translation>Select Directory</translation>
    </message>
    <message>
        <source>Image Format</source>
        <translation>Image Format</translation>
    </message>
    <message>
        <source>Scan Size</source>
        <translation>Scan Size</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>A4</source>
        <translation>A4</translation>
    </message>
    <message>
        <source>A3</source>
        <translation>A3</translation>
    </message>
    <message>
        <source>Double Camera</source>
        <translation>Double Camera</translation>
    </message>
    <message>
        <source>Composite photo</source>
        <translation>Composite photo</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>Top left</source>
        <translation>Top left</translation>
    </message>
    <message>
        <source>Bottom left</source>
        <translation>Bottom left</translation>
    </message>
    <message>
        <source>Top right</source>
        <translation>Top right</translation>
    </message>
    <message>
        <source>Bottom right</source>
        <translation>Bottom right</translation>
    </message>
    <message>
        <source>Scanner Sound:</source>
        <translation>Scanner Sound:</translation>
    </message>
    <message>
        <source>Book-Flat</source>
        <translation>Book-Flat</translation>
    </message>
    <message>
        <source>Book-Line</source>
        <translation>Book-Line</translation>
    </message>
    <message>
        <source>remove finger</source>
        <translation>remove finger</translation>
    </message>
    <message>
        <source>Double page</source>
        <translation>Double page</translation>
    </message>
    <message>
        <source>Doc-Proces</source>
        <translation>Doc-Proces</translation>
    </message>
    <message>
        <source>Watermark:</source>
        <translation>Watermark:</translation>
    </message>
    <message>
        <source>None</source>
        <translation>None</translation>
    </message>
    <message>
        <source>Time-watermark</source>
        <translation>Time-watermark</translation>
    </message>
    <message>
        <source>Watermark text</source>
        <translation>Watermark text</translation>
    </message>
</context>
<context>
    <name>SetShortcut</name>
    <message>
        <source>Scanner:</source>
        <translation>Scanner:</translation>
    </message>
    <message>
        <source>Document:</source>
        <translation>Document:</translation>
    </message>
    <message>
        <source>Book:</source>
        <translation>Book:</translation>
    </message>
    <message>
        <source>Press the keys</source>
        <translation>Press the keys</translation>
    </message>
    <message>
        <source>Not set</source>
        <translation>Not set</translation>
    </message>
    <message>
        <source>A marked text is no key combination. Right ones are written like Ctrl+S or Ctrl+Shift+F5.</source>
        <translation>A marked text is no key combination. Right ones are written like Ctrl+S or Ctrl+Shift+F5.</translation>
    </message>
    <message>
        <source>The keys of &quot;%1&quot; and &quot;%2&quot; are set in the file %3, as Shortcut_Document and Shortcut_Book. They hold from the next start.</source>
        <translation>The keys of &quot;%1&quot; and &quot;%2&quot; are set in the file %3, as Shortcut_Document and Shortcut_Book. They hold from the next start.</translation>
    </message>
    <message>
        <source>The strip of pictures uses %1 too, and no longer gets it.</source>
        <translation>The strip of pictures uses %1 too, and no longer gets it.</translation>
    </message>
    <message>
        <source>%1 does not start &quot;%2&quot;, because &quot;%3&quot; has these keys.</source>
        <translation>%1 does not start &quot;%2&quot;, because &quot;%3&quot; has these keys.</translation>
    </message>
</context>
<context>
    <name>ShotHint</name>
    <message>
        <source>page leaves the picture</source>
        <translation>page leaves the picture</translation>
    </message>
    <message>
        <source>page is moving</source>
        <translation>page is moving</translation>
    </message>
    <message>
        <source>too dark</source>
        <translation>too dark</translation>
    </message>
    <message>
        <source>too blurred</source>
        <translation>too blurred</translation>
    </message>
    <message>
        <source>reflection on the page</source>
        <translation>reflection on the page</translation>
    </message>
    <message>
        <source>edge of the page unclear</source>
        <translation>edge of the page unclear</translation>
    </message>
</context>
<context>
    <name>Start</name>
    <message>
        <source>The program is already running but does not answer. Please end it, or wait a moment, and start again.</source>
        <translation>The program is already running but does not answer. Please end it, or wait a moment, and start again.</translation>
    </message>
</context>
<context>
    <name>TextScan</name>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>The camera delivers no picture.</translation>
    </message>
    <message>
        <source>The text could not be written. The picture itself is saved.</source>
        <translation>The text could not be written. The picture itself is saved.</translation>
    </message>
    <message>
        <source>No text was recognised. The picture itself is saved.</source>
        <translation>No text was recognised. The picture itself is saved.</translation>
    </message>
    <message>
        <source>The text is being recognised.</source>
        <translation>The text is being recognised.</translation>
    </message>
    <message>
        <source>The text is still being recognised.</source>
        <translation>The text is still being recognised.</translation>
    </message>
    <message>
        <source>The recognition was cancelled. The picture itself is saved.</source>
        <translation>The recognition was cancelled. The picture itself is saved.</translation>
    </message>
</context>
<context>
    <name>Thumbnail</name>
    <message>
        <source>Thumbnail</source>
        <translation>Thumbnail</translation>
    </message>
    <message>
        <source>Produced files</source>
        <translation>Produced files</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>Open Directory</source>
        <translation>Open Directory</translation>
    </message>
    <message>
        <source>Add Image</source>
        <translation>Add Image</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>Move up</source>
        <translation>Move up</translation>
    </message>
    <message>
        <source>Move down</source>
        <translation>Move down</translation>
    </message>
    <message>
        <source>Image files(*.jpg *.png *.bmp)</source>
        <translation>Image files(*.jpg *.png *.bmp)</translation>
    </message>
    <message>
        <source>%1 is no longer there.</source>
        <translation>%1 is no longer there.</translation>
    </message>
    <message>
        <source>Not listed, because no picture can be read: %1</source>
        <translation>Not listed, because no picture can be read: %1</translation>
    </message>
</context>
<context>
    <name>ThumbnailDelegate</name>
    <message>
        <source>Working...</source>
        <translation>Working...</translation>
    </message>
</context>
<context>
    <name>ThumbnailDeletion</name>
    <message>
        <source>Undo</source>
        <translation>Undo</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) deleted</source>
        <translation>
            <numerusform>%n file deleted</numerusform>
            <numerusform>%n files deleted</numerusform>
        </translation>
    </message>
    <message>
        <source>Could not be deleted: %1</source>
        <translation>Could not be deleted: %1</translation>
    </message>
    <message>
        <source>Brought back as %1: other files have the old names now.</source>
        <translation>Brought back as %1: other files have the old names now.</translation>
    </message>
    <message>
        <source>Could not be brought back: %1</source>
        <translation>Could not be brought back: %1</translation>
    </message>
</context>
<context>
    <name>ThumbnailList</name>
    <message>
        <source>Page %1: %2</source>
        <translation>Page %1: %2</translation>
    </message>
</context>
<context>
    <name>TitleBar</name>
    <message>
        <source>Skin</source>
        <translation>Skin</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimize</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>Maximize</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Restore</translation>
    </message>
</context>
<context>
    <name>ToolBar</name>
    <message>
        <source>Device</source>
        <translation>Device</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Model</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Resolution</translation>
    </message>
    <message>
        <source>Find, straighten and cut out the page</source>
        <translation>Find, straighten and cut out the page</translation>
    </message>
    <message>
        <source>Crop and straighten all pages, cards and receipts side by side: one file each</source>
        <translation>Crop and straighten all pages, cards and receipts side by side: one file each</translation>
    </message>
    <message>
        <source>Cut out the area drawn in the picture</source>
        <translation>Cut out the area drawn in the picture</translation>
    </message>
    <message>
        <source>Second camera</source>
        <translation>Second camera</translation>
    </message>
    <message>
        <source>Show the second camera in the picture</source>
        <translation>Show the second camera in the picture</translation>
    </message>
    <message>
        <source>Fit to window</source>
        <translation>Fit to window</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Full screen</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>Zoom in</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>Zoom out</translation>
    </message>
    <message>
        <source>Rotate left</source>
        <translation>Rotate left</translation>
    </message>
    <message>
        <source>Rotate right</source>
        <translation>Rotate right</translation>
    </message>
    <message>
        <source>Freeze the picture</source>
        <translation>Freeze the picture</translation>
    </message>
    <message>
        <source>More tools</source>
        <translation>More tools</translation>
    </message>
</context>
<context>
    <name>TuningControl</name>
    <message>
        <source>There is nothing to focus on at this place.</source>
        <translation>There is nothing to focus on at this place.</translation>
    </message>
</context>
<context>
    <name>VideoRecord</name>
    <message>
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>Recording video:</source>
        <translation>Recording video:</translation>
    </message>
    <message>
        <source>Video Record</source>
        <translation>Video Record</translation>
    </message>
    <message>
        <source>Tip</source>
        <translation>Tip</translation>
    </message>
    <message>
        <source>Record finished</source>
        <translation>Record finished</translation>
    </message>
    <message>
        <source>Do you want to open the video directory?</source>
        <translation>Do you want to open the video directory?</translation>
    </message>
    <message>
        <source>Open Directory</source>
        <translation>Open Directory</translation>
    </message>
    <message>
        <source>Finish</source>
        <translation>Finish</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Recorded:</source>
        <translation>Recorded:</translation>
    </message>
</context>
<context>
    <name>VideoView</name>
    <message>
        <source>Please waiting...</source>
        <translation>Please waiting...</translation>
    </message>
</context>
<context>
    <name>WaitingSign</name>
    <message>
        <source>Waiting for a picture of the camera. Press Esc to give it up.</source>
        <translation>Waiting for a picture of the camera. Press Esc to give it up.</translation>
    </message>
</context>
</TS>
