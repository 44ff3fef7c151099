<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en_US">
<context>
    <name>AssistControl</name>
    <message>
        <source>The second camera was disconnected.</source>
        <translation>副摄像头已断开连接。</translation>
    </message>
    <message>
        <source>Tips</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>Please turn off the deskew function before using it again!</source>
        <translation>请先关闭纠偏功能，再使用此功能！</translation>
    </message>
    <message>
        <source>There is no second camera.</source>
        <translation>没有副摄像头。</translation>
    </message>
    <message>
        <source>The second camera cannot be opened.</source>
        <translation>无法打开副摄像头。</translation>
    </message>
    <message>
        <source>Not in the captures: &quot;Composite photo&quot; is off.</source>
        <translation>不会拍入图片：“合成拍照”已关闭。</translation>
    </message>
</context>
<context>
    <name>AutoScan</name>
    <message>
        <source>Pages taken:</source>
        <translation>已拍页数：</translation>
    </message>
    <message>
        <source>Lay the next page under the camera.</source>
        <translation>请将下一页放在摄像头下方。</translation>
    </message>
    <message>
        <source>Pictures taken:</source>
        <translation>已拍张数：</translation>
    </message>
    <message>
        <source>Seconds to the next picture:</source>
        <translation>距下一次拍摄（秒）：</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>进度</translation>
    </message>
</context>
<context>
    <name>BarCode</name>
    <message>
        <source>Contents of the codes</source>
        <translation>条码内容</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>复制</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Codes</source>
        <translation>条码</translation>
    </message>
</context>
<context>
    <name>BarcodeScan</name>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>摄像头没有传来图像。</translation>
    </message>
    <message>
        <source>No code was found.</source>
        <translation>未找到条码。</translation>
    </message>
    <message>
        <source>The codes are still being read.</source>
        <translation>仍在识别条码。</translation>
    </message>
    <message>
        <source>The codes are being read.</source>
        <translation>正在识别条码。</translation>
    </message>
    <message>
        <source>Reading the codes was cancelled. The picture itself is saved.</source>
        <translation>已取消识别条码。图片本身已保存。</translation>
    </message>
</context>
<context>
    <name>BookScan</name>
    <message>
        <source>This device does not support this feature!</source>
        <translation>此设备不支持该功能！</translation>
    </message>
    <message>
        <source>Please turn on the book-line first!</source>
        <translation>请先打开书籍中线！</translation>
    </message>
    <message>
        <source>The book is still being flattened.</source>
        <translation>书籍仍在展平中。</translation>
    </message>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>摄像头没有传来图像。</translation>
    </message>
    <message>
        <source>The book is being flattened.</source>
        <translation>正在展平书籍。</translation>
    </message>
    <message>
        <source>The flattening was cancelled. The picture itself is saved.</source>
        <translation>已取消展平，原图片已保存。</translation>
    </message>
    <message>
        <source>Book flat failed!</source>
        <translation>书籍展平失败！</translation>
    </message>
    <message>
        <source>A page of the book could not be saved. Please check the folder of the pictures.</source>
        <translation>书籍的一页无法保存。请检查图片文件夹。</translation>
    </message>
</context>
<context>
    <name>BtnControl</name>
    <message>
        <source>More functions</source>
        <translation>更多功能</translation>
    </message>
    <message>
        <source>PDF of picture files...</source>
        <translation>将图片文件合成为 PDF...</translation>
    </message>
    <message>
        <source>Hold down or right-click: PDF of picture files, text, PDF/A</source>
        <translation>按住或右击：图片文件合成 PDF、文字、PDF/A</translation>
    </message>
    <message>
        <source>With text</source>
        <translation>带文字</translation>
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
        <translation>摄像头没有传来图像。</translation>
    </message>
    <message>
        <source>The picture cannot be read back. Please try again.</source>
        <translation>无法读取刚保存的图片，请重试。</translation>
    </message>
    <message>
        <source>The first picture is taken. Lay the second side under the camera and press the button again.</source>
        <translation>第一张已拍好。请将第二面放在摄像头下方，然后再次点击按钮。</translation>
    </message>
    <message>
        <source>The merge was given up. The first picture stays in the list.</source>
        <translation>已放弃合并。第一张图片仍保留在列表中。</translation>
    </message>
</context>
<context>
    <name>CompositeCapture</name>
    <message>
        <source>Tips</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>Please turn off deskew before using composite photo feature again</source>
        <translation>请先关闭纠偏，再使用合成拍照功能</translation>
    </message>
    <message>
        <source>One of the cameras delivers no picture.</source>
        <translation>其中一个摄像头没有传来图像。</translation>
    </message>
</context>
<context>
    <name>ConfigSet</name>
    <message>
        <source>Setting</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>&amp;Global</source>
        <translation>全局(&amp;G)</translation>
    </message>
    <message>
        <source>&amp;Image</source>
        <translation>图片(&amp;I)</translation>
    </message>
    <message>
        <source>Co&amp;ntinuous shooting</source>
        <translation>连续拍摄(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Shortcuts</source>
        <translation>快捷键(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>关于(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>关闭(&amp;C)</translation>
    </message>
</context>
<context>
    <name>ControlOverlay</name>
    <message>
        <source>Camera controls</source>
        <translation>摄像头调节</translation>
    </message>
</context>
<context>
    <name>ControlPanel</name>
    <message>
        <source>Camera controls</source>
        <translation>摄像头调节</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Focus</source>
        <translation>对焦</translation>
    </message>
    <message>
        <source>Exposure</source>
        <translation>曝光</translation>
    </message>
    <message>
        <source>Gain</source>
        <translation>增益</translation>
    </message>
    <message>
        <source>White balance</source>
        <translation>白平衡</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>亮度</translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation>对比度</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>饱和度</translation>
    </message>
    <message>
        <source>Sharpness</source>
        <translation>锐度</translation>
    </message>
    <message>
        <source>Backlight</source>
        <translation>逆光补偿</translation>
    </message>
    <message>
        <source>Anti-flicker</source>
        <translation>抗闪烁</translation>
    </message>
    <message>
        <source>As delivered</source>
        <translation>恢复出厂设置</translation>
    </message>
    <message>
        <source>Puts everything back to how the camera was delivered</source>
        <translation>将所有项目恢复为摄像头出厂时的状态</translation>
    </message>
    <message>
        <source>No camera is open.</source>
        <translation>没有打开的摄像头。</translation>
    </message>
    <message>
        <source>This camera offers nothing that can be set.</source>
        <translation>此摄像头没有可调节的项目。</translation>
    </message>
    <message>
        <source>A click on the picture focuses there.</source>
        <translation>点击画面即可在该处对焦。</translation>
    </message>
</context>
<context>
    <name>ControlRow</name>
    <message>
        <source>Automatic</source>
        <translation>自动</translation>
    </message>
    <message>
        <source>%1, automatic</source>
        <translation>%1，自动</translation>
    </message>
    <message>
        <source>Double click or Delete: as delivered (%1)</source>
        <translation>双击或按 Delete 键恢复出厂值（%1）</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>关闭</translation>
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
        <translation>裁剪</translation>
    </message>
    <message>
        <source>Whole picture</source>
        <translation>整张图片</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>CropView</name>
    <message>
        <source>Picture with the corners of the page</source>
        <translation>带页面四角的图片</translation>
    </message>
    <message>
        <source>Upper left corner</source>
        <translation>左上角</translation>
    </message>
    <message>
        <source>Upper right corner</source>
        <translation>右上角</translation>
    </message>
    <message>
        <source>Lower right corner</source>
        <translation>右下角</translation>
    </message>
    <message>
        <source>Lower left corner</source>
        <translation>左下角</translation>
    </message>
    <message>
        <source>The picture is being read...</source>
        <translation>正在读取图片…</translation>
    </message>
</context>
<context>
    <name>DeviceControl</name>
    <message>
        <source>No found device!</source>
        <translation>未找到设备！</translation>
    </message>
    <message>
        <source>Device create failed!</source>
        <translation>无法打开设备！</translation>
    </message>
    <message>
        <source>Waring</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>video create failed!</source>
        <translation>视频打开失败！</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>The camera was disconnected.</source>
        <translation>摄像头已断开连接。</translation>
    </message>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>摄像头没有传来图像。</translation>
    </message>
    <message>
        <source>No document camera is connected. Another one can be chosen above.</source>
        <translation>未连接高拍仪，可在上方选择其他摄像头。</translation>
    </message>
    <message>
        <source>Waiting for permission to use %1...</source>
        <translation>正在等待 %1 的使用权限…</translation>
    </message>
    <message>
        <source>%1 is in use by another program. Waiting until it is free...</source>
        <translation>%1 正被其他程序使用，空闲后会自动打开…</translation>
    </message>
    <message>
        <source>%1 does not start. Trying again...</source>
        <translation>%1 未能启动，正在重试…</translation>
    </message>
</context>
<context>
    <name>EntryBar</name>
    <message>
        <source>Change the file</source>
        <translation>修改文件</translation>
    </message>
    <message>
        <source>Rename (F2)</source>
        <translation>重命名 (F2)</translation>
    </message>
    <message>
        <source>Turn left (Shift+R)</source>
        <translation>向左旋转 (Shift+R)</translation>
    </message>
    <message>
        <source>Turn right (R)</source>
        <translation>向右旋转 (R)</translation>
    </message>
    <message>
        <source>Crop (C)</source>
        <translation>裁剪 (C)</translation>
    </message>
    <message>
        <source>Set straight (S)</source>
        <translation>拉正 (S)</translation>
    </message>
    <message>
        <source>Undo (Ctrl+Z)</source>
        <translation>撤销 (Ctrl+Z)</translation>
    </message>
</context>
<context>
    <name>EntryName</name>
    <message>
        <source>New name</source>
        <translation>新名称</translation>
    </message>
</context>
<context>
    <name>FaceVerify</name>
    <message>
        <source>Live picture of the face</source>
        <translation>人脸实时画面</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>结果</translation>
    </message>
    <message>
        <source>ReadCard</source>
        <translation>读卡</translation>
    </message>
    <message>
        <source>Scanner</source>
        <translation>拍照</translation>
    </message>
    <message>
        <source>Verify</source>
        <translation>比对</translation>
    </message>
    <message>
        <source>Live-Face</source>
        <translation>活体检测</translation>
    </message>
    <message>
        <source>One-Click-Verify</source>
        <translation>一键核验</translation>
    </message>
    <message>
        <source>Portrait of the card</source>
        <translation>证件照片</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>姓名：</translation>
    </message>
    <message>
        <source>Gender:</source>
        <translation>性别：</translation>
    </message>
    <message>
        <source>Nation:</source>
        <translation>民族：</translation>
    </message>
    <message>
        <source>Born:</source>
        <translation>出生：</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>年</translation>
    </message>
    <message>
        <source>Mon</source>
        <translation>月</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>日</translation>
    </message>
    <message>
        <source>Address:</source>
        <translation>住址：</translation>
    </message>
    <message>
        <source>Number:</source>
        <translation>号码：</translation>
    </message>
    <message>
        <source>Department:</source>
        <translation>签发机关：</translation>
    </message>
    <message>
        <source>Valid Period:</source>
        <translation>有效期限：</translation>
    </message>
    <message>
        <source>Face Verify</source>
        <translation>人脸核验</translation>
    </message>
    <message>
        <source>The face camera was disconnected.</source>
        <translation>人脸摄像头已断开连接。</translation>
    </message>
    <message>
        <source>Init IDCard failed,this device may not support this feature!</source>
        <translation>初始化身份证阅读器失败，此设备可能不支持该功能！</translation>
    </message>
    <message>
        <source>There is no face camera.</source>
        <translation>没有人脸摄像头。</translation>
    </message>
    <message>
        <source>The face camera cannot be opened. It may be in use.</source>
        <translation>无法打开人脸摄像头，它可能正在使用中。</translation>
    </message>
    <message>
        <source>Waiting for a picture of the face...</source>
        <translation>正在等待人脸图片……</translation>
    </message>
    <message>
        <source>There is no new picture of the face.</source>
        <translation>没有新的人脸图片。</translation>
    </message>
    <message>
        <source>The picture was taken.</source>
        <translation>图片已拍摄。</translation>
    </message>
    <message>
        <source>Reading the card...</source>
        <translation>正在读卡……</translation>
    </message>
    <message>
        <source>Read idcard failed!</source>
        <translation>读取身份证失败！</translation>
    </message>
    <message>
        <source>ID card info is empty.</source>
        <translation>身份证信息为空。</translation>
    </message>
    <message>
        <source>The face library cannot be used on this computer!</source>
        <translation>此计算机无法使用人脸识别库！</translation>
    </message>
    <message>
        <source>Comparing the faces...</source>
        <translation>正在比对人脸……</translation>
    </message>
    <message>
        <source>Face comparison failed, score:%1</source>
        <translation>人脸比对失败，分数：%1</translation>
    </message>
    <message>
        <source>Face comparison success, score:%1</source>
        <translation>人脸比对成功，分数：%1</translation>
    </message>
    <message>
        <source>No card has been read.</source>
        <translation>尚未读卡。</translation>
    </message>
    <message>
        <source>Looking at the face...</source>
        <translation>正在检测人脸……</translation>
    </message>
    <message>
        <source>This is not a living face.</source>
        <translation>这不是活体人脸。</translation>
    </message>
    <message>
        <source>This is a living face.</source>
        <translation>这是活体人脸。</translation>
    </message>
    <message>
        <source>Please confirm that your ID card is in the card reading position, your face is in the center of the video screen, and then click the confirm button</source>
        <translation>请确认身份证已放在读卡位置、人脸位于视频画面中央，然后点击确定按钮</translation>
    </message>
</context>
<context>
    <name>FignerPrint</name>
    <message>
        <source>Fingerprint</source>
        <translation>指纹</translation>
    </message>
    <message>
        <source>Take fingerprint</source>
        <translation>采集指纹</translation>
    </message>
    <message>
        <source>Change mode</source>
        <translation>切换模式</translation>
    </message>
    <message>
        <source>FingerPrint</source>
        <translation>指纹采集</translation>
    </message>
    <message>
        <source>Open FP device failed</source>
        <translation>打开指纹仪失败</translation>
    </message>
    <message>
        <source>Please put your finger on it</source>
        <translation>请将手指放在指纹仪上</translation>
    </message>
    <message>
        <source>Get FP data Success</source>
        <translation>指纹采集成功</translation>
    </message>
    <message>
        <source>Read FP data timeout</source>
        <translation>读取指纹超时</translation>
    </message>
    <message>
        <source>The sensor does not answer any more.</source>
        <translation>指纹仪已无响应。</translation>
    </message>
    <message>
        <source>The picture could not be saved. Please check the folder %1.</source>
        <translation>图片无法保存，请检查文件夹 %1。</translation>
    </message>
    <message>
        <source>The mode stays as it is.</source>
        <translation>模式未改变。</translation>
    </message>
    <message>
        <source>Mode %1 holds from the next start on.</source>
        <translation>模式 %1 将在下次启动后生效。</translation>
    </message>
</context>
<context>
    <name>FileHandover</name>
    <message>
        <source>No program opens %1.</source>
        <translation>没有程序可以打开 %1。</translation>
    </message>
    <message>
        <source>The folder %1 could not be opened.</source>
        <translation>无法打开文件夹 %1。</translation>
    </message>
    <message>
        <source>Only pictures can be printed.</source>
        <translation>只能打印图片。</translation>
    </message>
    <message>
        <source>The picture could not be printed.</source>
        <translation>图片打印失败。</translation>
    </message>
</context>
<context>
    <name>FirstSide</name>
    <message>
        <source>First side</source>
        <translation>第一面</translation>
    </message>
    <message>
        <source>Give up the merge</source>
        <translation>放弃合并</translation>
    </message>
    <message>
        <source>Give up the merge (Esc)</source>
        <translation>放弃合并（Esc）</translation>
    </message>
</context>
<context>
    <name>FrozenBar</name>
    <message>
        <source>Save the frozen picture</source>
        <translation>保存定格画面</translation>
    </message>
    <message>
        <source>Frozen. Captures save the live page.</source>
        <translation>画面已定格，拍照保存的是实时画面。</translation>
    </message>
</context>
<context>
    <name>FunctionButtons</name>
    <message>
        <source>Capture</source>
        <translation>拍照</translation>
    </message>
    <message>
        <source>Document</source>
        <translation>文档</translation>
    </message>
    <message>
        <source>Barcode</source>
        <translation>条码</translation>
    </message>
    <message>
        <source>Merge images</source>
        <translation>图像合并</translation>
    </message>
    <message>
        <source>Merge card</source>
        <translation>证件合并</translation>
    </message>
    <message>
        <source>Record video</source>
        <translation>录像</translation>
    </message>
    <message>
        <source>Continuous shooting</source>
        <translation>连续拍摄</translation>
    </message>
    <message>
        <source>Recognize text (OCR)</source>
        <translation>文字识别</translation>
    </message>
    <message>
        <source>Read ID card</source>
        <translation>读取身份证</translation>
    </message>
    <message>
        <source>Print receipt</source>
        <translation>打印小票</translation>
    </message>
    <message>
        <source>Make PDF</source>
        <translation>生成 PDF</translation>
    </message>
    <message>
        <source>Multi-page PDF</source>
        <translation>多页 PDF</translation>
    </message>
    <message>
        <source>Sign</source>
        <translation>签名</translation>
    </message>
    <message>
        <source>Fingerprint</source>
        <translation>指纹</translation>
    </message>
    <message>
        <source>Scan book</source>
        <translation>书籍扫描</translation>
    </message>
    <message>
        <source>Verify face</source>
        <translation>人脸核验</translation>
    </message>
    <message>
        <source>Burn-in test</source>
        <translation>老化测试</translation>
    </message>
</context>
<context>
    <name>IdCardReader</name>
    <message>
        <source>IDCard Read System</source>
        <translation>身份证读卡系统</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>正面</translation>
    </message>
    <message>
        <source>Name</source>
        <comment>of a person</comment>
        <translation>姓名</translation>
    </message>
    <message>
        <source>Gender</source>
        <translation>性别</translation>
    </message>
    <message>
        <source>Nation</source>
        <translation>民族</translation>
    </message>
    <message>
        <source>Born</source>
        <translation>出生</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>年</translation>
    </message>
    <message>
        <source>Mon</source>
        <translation>月</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>日</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>住址</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>公民身份号码</translation>
    </message>
    <message>
        <source>Opposite</source>
        <translation>反面</translation>
    </message>
    <message>
        <source>Department</source>
        <translation>签发机关</translation>
    </message>
    <message>
        <source>Valid Period</source>
        <translation>有效期限</translation>
    </message>
    <message>
        <source>Path</source>
        <translation>路径</translation>
    </message>
    <message>
        <source>Tip:</source>
        <translation>提示：</translation>
    </message>
    <message>
        <source>Browse</source>
        <translation>浏览</translation>
    </message>
    <message>
        <source>Read</source>
        <translation>读卡</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Read2</source>
        <translation>读卡2</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>ID Card Reader</source>
        <translation>身份证阅读器</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Init IDCard failed!</source>
        <translation>身份证阅读器初始化失败！</translation>
    </message>
    <message>
        <source>Please select the save path</source>
        <translation>请选择保存路径</translation>
    </message>
    <message>
        <source>Reading the card ...</source>
        <translation>正在读卡……</translation>
    </message>
    <message>
        <source>No card reader is attached.</source>
        <translation>未连接身份证阅读器。</translation>
    </message>
    <message>
        <source>The card could not be read. Please lift it and lay it on again.</source>
        <translation>无法读取证件，请拿起后重新放置。</translation>
    </message>
    <message>
        <source>The card has been read. Please lay on the next one.</source>
        <translation>读卡完成，请放置下一张证件。</translation>
    </message>
    <message>
        <source>Please lay a card on the reader.</source>
        <translation>请将证件放在阅读器上。</translation>
    </message>
    <message>
        <source>Please lay a card on the reader and press &quot;Read&quot;.</source>
        <translation>请将证件放在阅读器上，然后点击“读卡”。</translation>
    </message>
    <message>
        <source>The card has been saved.</source>
        <translation>证件信息已保存。</translation>
    </message>
    <message>
        <source>The portrait could not be saved.</source>
        <translation>无法保存照片。</translation>
    </message>
    <message>
        <source>The card could not be saved. Please check the file.</source>
        <translation>无法保存证件信息，请检查文件。</translation>
    </message>
</context>
<context>
    <name>ImageMerge</name>
    <message>
        <source>Image Merge</source>
        <translation>图像合并</translation>
    </message>
    <message>
        <source>Left-Right Merge</source>
        <translation>左右合并</translation>
    </message>
    <message>
        <source>Up-Down Merge</source>
        <translation>上下合并</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>间距</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Merge Images failed!</source>
        <translation>图像合并失败！</translation>
    </message>
    <message>
        <source>There is no picture to save.</source>
        <translation>没有可保存的图片。</translation>
    </message>
    <message>
        <source>The merged picture has not been saved. Close without saving it?</source>
        <translation>合并后的图片尚未保存，确定不保存就关闭吗？</translation>
    </message>
</context>
<context>
    <name>JobBar</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>第 %1 页，共 %2 页</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1%</translation>
    </message>
    <message>
        <source>Being cancelled...</source>
        <translation>正在取消...</translation>
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
        <translation>设置</translation>
    </message>
    <message>
        <source>Tips</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>Restart the software to take effect!</source>
        <translation>重启软件后生效！</translation>
    </message>
    <message>
        <source>The program is already running.</source>
        <translation>程序已在运行。</translation>
    </message>
</context>
<context>
    <name>MainDesk</name>
    <message>
        <source>Please complete the image merge first!</source>
        <translation>请先完成图像合并！</translation>
    </message>
    <message>
        <source>%1 of %2 pages could not be saved. Please check the folder %3.</source>
        <translation>共 %2 页，其中 %1 页无法保存，请检查文件夹 %3。</translation>
    </message>
    <message>
        <source>The picture could not be saved. Please check the folder %1.</source>
        <translation>图片无法保存，请检查文件夹 %1。</translation>
    </message>
    <message>
        <source>No found device!</source>
        <translation>未找到设备！</translation>
    </message>
</context>
<context>
    <name>More</name>
    <message>
        <source>More</source>
        <translation>更多</translation>
    </message>
    <message>
        <source>Select:</source>
        <translation>选择：</translation>
    </message>
</context>
<context>
    <name>MoveVideoView</name>
    <message>
        <source>Please waiting...</source>
        <translation>请稍候…</translation>
    </message>
</context>
<context>
    <name>MoveVideoWidget</name>
    <message>
        <source>Second camera</source>
        <translation>副摄像头</translation>
    </message>
</context>
<context>
    <name>MsgBox</name>
    <message>
        <source>MsgBox</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>warnning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Question</source>
        <translation>询问</translation>
    </message>
</context>
<context>
    <name>NamedFiles</name>
    <message numerus="yes">
        <source>%1 and %n more</source>
        <translation>
            <numerusform>%1 及另外 %n 个</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>PdfEx</name>
    <message>
        <source>PDFEX</source>
        <translation>多页 PDF</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>手动</translation>
    </message>
    <message>
        <source>AddImages</source>
        <translation>添加图片</translation>
    </message>
    <message>
        <source>Scanner</source>
        <translation>拍照</translation>
    </message>
    <message>
        <source>Open-path</source>
        <translation>打开文件夹</translation>
    </message>
    <message>
        <source>Pdf</source>
        <translation>生成 PDF</translation>
    </message>
    <message>
        <source>Image files(*.jpg *.png *.bmp)</source>
        <translation>图片文件 (*.jpg *.png *.bmp)</translation>
    </message>
    <message>
        <source>There are no pages yet.</source>
        <translation>还没有页面。</translation>
    </message>
    <message>
        <source>The PDF is being written...</source>
        <translation>正在写入 PDF...</translation>
    </message>
    <message>
        <source>Not in the PDF: %1. Only files whose names end in jpg, jpeg or png, in small letters, become pages.</source>
        <translation>不在 PDF 中：%1。只有以小写 jpg、jpeg 或 png 结尾的文件才能成为页面。</translation>
    </message>
    <message>
        <source>No PDF was written, because this cannot be read: %1. Take it out of the list or put it right, then try again.</source>
        <translation>未生成 PDF：无法读取 %1。请将其移出列表或修复后重试。</translation>
    </message>
    <message>
        <source>The PDF could not be written. The pages stay in the list. Please check the folder.</source>
        <translation>无法写入 PDF。页面仍保留在列表中，请检查文件夹。</translation>
    </message>
    <message>
        <source>The PDF is written.</source>
        <translation>PDF 已生成。</translation>
    </message>
    <message>
        <source>The list of pages is not in a PDF yet. Close and give up the list? The picture files stay.</source>
        <translation>这些页面尚未写入 PDF，确定放弃页面列表并关闭吗？图片文件会保留。</translation>
    </message>
    <message>
        <source>Cancelled: no PDF was written. The pages stay in the list.</source>
        <translation>已取消：没有写入 PDF。页面仍在列表中。</translation>
    </message>
    <message>
        <source>With text</source>
        <translation>带文字</translation>
    </message>
    <message>
        <source>The recognised text lies invisibly over the pictures: the PDF can be searched and its words copied.</source>
        <translation>识别出的文字以不可见的方式覆盖在图片上：可以在 PDF 中搜索和复制文字。</translation>
    </message>
    <message>
        <source>PDF/A-2b</source>
        <translation>PDF/A-2b</translation>
    </message>
    <message>
        <source>The form of PDF for archives: everything needed to show it is in the file.</source>
        <translation>用于存档的 PDF 格式：显示所需的一切都在文件中。</translation>
    </message>
</context>
<context>
    <name>PdfExControl</name>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>摄像头没有传来图像。</translation>
    </message>
    <message>
        <source>The picture could not be saved.</source>
        <translation>无法保存图片。</translation>
    </message>
</context>
<context>
    <name>PdfScan</name>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>摄像头没有传来图像。</translation>
    </message>
    <message>
        <source>The PDF could not be made. The picture itself is saved.</source>
        <translation>无法生成 PDF。图片本身已保存。</translation>
    </message>
</context>
<context>
    <name>PdfSynthesis</name>
    <message>
        <source>Image files(*.jpg *.png *.bmp)</source>
        <translation>图片文件 (*.jpg *.png *.bmp)</translation>
    </message>
    <message>
        <source>Save PDF path</source>
        <translation>PDF 保存路径</translation>
    </message>
    <message>
        <source>PDF(*.pdf)</source>
        <translation>PDF(*.pdf)</translation>
    </message>
    <message>
        <source>The PDF could not be written.</source>
        <translation>无法写入 PDF。</translation>
    </message>
    <message>
        <source>Tip</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>PDF</source>
        <translation>PDF</translation>
    </message>
    <message>
        <source>Do you want to open the PDF directory?</source>
        <translation>是否打开 PDF 所在文件夹？</translation>
    </message>
    <message>
        <source>Open PDF directory</source>
        <translation>打开 PDF 文件夹</translation>
    </message>
    <message>
        <source>Finish</source>
        <translation>完成</translation>
    </message>
    <message>
        <source>%1 could not be read. No PDF was made.</source>
        <translation>无法读取 %1。未生成 PDF。</translation>
    </message>
    <message>
        <source>%1 could not be read. The PDF holds the pages before it.</source>
        <translation>无法读取 %1。PDF 中包含它之前的页面。</translation>
    </message>
    <message>
        <source>A PDF is still being written.</source>
        <translation>仍在写入一个 PDF。</translation>
    </message>
    <message>
        <source>The PDF is being written...</source>
        <translation>正在写入 PDF...</translation>
    </message>
    <message>
        <source>Cancelled: no PDF was written.</source>
        <translation>已取消：没有写入 PDF。</translation>
    </message>
</context>
<context>
    <name>PdfTexts</name>
    <message>
        <source>The text of the PDF is being recognised.</source>
        <translation>正在识别 PDF 的文字。</translation>
    </message>
    <message>
        <source>No text was found in the PDF. It stays as it is.</source>
        <translation>PDF 中没有找到文字，文件保持不变。</translation>
    </message>
    <message>
        <source>Cancelled: the PDF stays without text.</source>
        <translation>已取消：PDF 不带文字。</translation>
    </message>
    <message>
        <source>The text could not be recognised. The PDF stays without text.</source>
        <translation>无法识别文字。PDF 不带文字。</translation>
    </message>
    <message>
        <source>The PDF or its pictures were changed meanwhile. It stays without text.</source>
        <translation>PDF 或其图片在此期间已被更改。PDF 不带文字。</translation>
    </message>
    <message>
        <source>The text could not be written. The PDF stays without text.</source>
        <translation>无法写入文字。PDF 不带文字。</translation>
    </message>
</context>
<context>
    <name>PdfView</name>
    <message>
        <source>The picture stands still: the camera delivers no new one.</source>
        <translation>画面已停止更新：摄像头没有传来新图像。</translation>
    </message>
</context>
<context>
    <name>PictureEdits</name>
    <message>
        <source>%1 is straight already.</source>
        <translation>%1 已经是正的。</translation>
    </message>
    <message>
        <source>%1 could not be changed.</source>
        <translation>无法修改 %1。</translation>
    </message>
    <message>
        <source>%1 was changed by another program meanwhile and stays so.</source>
        <translation>%1 已被其他程序修改，保持现状。</translation>
    </message>
    <message>
        <source>A file needs a name.</source>
        <translation>请输入文件名。</translation>
    </message>
    <message>
        <source>A name may not begin with a dot or contain a slash.</source>
        <translation>文件名不能以点开头，也不能包含斜杠。</translation>
    </message>
    <message>
        <source>There is already a file of the name %1.</source>
        <translation>已有名为 %1 的文件。</translation>
    </message>
    <message>
        <source>%1 could not be renamed.</source>
        <translation>无法重命名 %1。</translation>
    </message>
</context>
<context>
    <name>PrinterWidget</name>
    <message>
        <source>Printers</source>
        <translation>打印机</translation>
    </message>
    <message>
        <source>Text to print</source>
        <translation>要打印的文字</translation>
    </message>
    <message>
        <source>Size of the letters</source>
        <translation>文字大小</translation>
    </message>
    <message>
        <source>Printing...</source>
        <translation>正在打印...</translation>
    </message>
    <message>
        <source>选择打印图片</source>
        <translation>选择打印图片</translation>
    </message>
    <message>
        <source>Images (*.jpg *.bmp *.png)</source>
        <translation>图片 (*.jpg *.bmp *.png)</translation>
    </message>
    <message>
        <source>The picture cannot be read.</source>
        <translation>无法读取该图片。</translation>
    </message>
    <message>
        <source>The picture is too high for its width: it would need more than 8 m of paper.</source>
        <translation>图片相对于宽度过高：打印需要超过 8 米的纸。</translation>
    </message>
</context>
<context>
    <name>RecordControl</name>
    <message>
        <source>Tips</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>Recording stopped, please adjust the resolution to 1600 * 1200</source>
        <translation>录像已停止，请将分辨率调整为 1600 * 1200</translation>
    </message>
    <message>
        <source>The video could not be recorded.</source>
        <translation>无法录像。</translation>
    </message>
    <message>
        <source>The recording goes on. The video button shows its window again.</source>
        <translation>录像仍在继续。按录像按钮可再次显示其窗口。</translation>
    </message>
    <message>
        <source>Nothing was recorded: the camera delivered no picture.</source>
        <translation>没有录到内容：摄像头没有传来图像。</translation>
    </message>
    <message>
        <source>The camera delivers no picture. The recording has ended; the video until then is saved.</source>
        <translation>摄像头没有传来图像。录像已结束，此前录制的视频已保存。</translation>
    </message>
    <message>
        <source>The disk is full or cannot be written. The recording has ended; the video until then is saved.</source>
        <translation>磁盘已满或无法写入。录像已结束，此前录制的视频已保存。</translation>
    </message>
    <message>
        <source>The video encoder failed. The recording has ended; the video until then is saved.</source>
        <translation>视频编码器出错。录像已结束，此前录制的视频已保存。</translation>
    </message>
    <message>
        <source>The camera delivers no picture; the video shows the last one.</source>
        <translation>摄像头没有传来图像，视频将保持最后一帧。</translation>
    </message>
    <message>
        <source>The video could not be recorded. Please check the folder %1.</source>
        <translation>无法录制视频，请检查文件夹 %1。</translation>
    </message>
    <message>
        <source>The picture of this camera is too large for a film: choose at most 1600 x 1200.</source>
        <translation>此摄像头的画面太大，无法录像：请选择不超过 1600 x 1200 的分辨率。</translation>
    </message>
    <message>
        <source>Record at %1 x %2</source>
        <translation>以 %1 x %2 录像</translation>
    </message>
    <message>
        <source>The video is saved. It is being put into a form that plays everywhere at once.</source>
        <translation>视频已保存。正在整理，使其在任何地方都能立即播放。</translation>
    </message>
    <message>
        <source>Cancelled. The video is saved and plays as it is.</source>
        <translation>已取消。视频已保存，可照常播放。</translation>
    </message>
</context>
<context>
    <name>RecordingMark</name>
    <message>
        <source>Recording, %1</source>
        <translation>正在录像，%1</translation>
    </message>
</context>
<context>
    <name>ScanControl</name>
    <message>
        <source>Auto Scan</source>
        <translation>自动拍摄</translation>
    </message>
    <message>
        <source>Timer Scan</source>
        <translation>定时拍摄</translation>
    </message>
</context>
<context>
    <name>ScanModes</name>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>摄像头没有传来图像。</translation>
    </message>
</context>
<context>
    <name>SetAbout</name>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Lumro High Speed Portable Scanner</source>
        <translation>Lumro 高速便携扫描仪</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>版本</translation>
    </message>
</context>
<context>
    <name>SetAutoPage</name>
    <message>
        <source>Continuous shooting</source>
        <translation>连续拍摄</translation>
    </message>
    <message>
        <source>AutoScan</source>
        <translation>自动拍摄</translation>
    </message>
    <message>
        <source>Takes a picture when a new page lies still.</source>
        <translation>放好新的一页后自动拍照。</translation>
    </message>
    <message>
        <source>TimerScan</source>
        <translation>定时拍摄</translation>
    </message>
    <message>
        <source>Takes a picture at equal intervals.</source>
        <translation>按固定的时间间隔拍照。</translation>
    </message>
    <message>
        <source>Interval in seconds</source>
        <translation>间隔（秒）</translation>
    </message>
</context>
<context>
    <name>SetGlobal</name>
    <message>
        <source>Naming Rules</source>
        <translation>命名规则</translation>
    </message>
    <message>
        <source>Custom + serial number</source>
        <translation>自定义 + 序号</translation>
    </message>
    <message>
        <source>Name prefix:</source>
        <translation>名称前缀：</translation>
    </message>
    <message>
        <source>001.jpg</source>
        <translation>001.jpg</translation>
    </message>
    <message>
        <source>Date + Time</source>
        <translation>日期 + 时间</translation>
    </message>
    <message>
        <source>20230101_time</source>
        <translation>20230101_时间</translation>
    </message>
    <message>
        <source>Create dir by date</source>
        <translation>按日期创建文件夹</translation>
    </message>
    <message>
        <source>Scan Type</source>
        <translation>扫描类型</translation>
    </message>
    <message>
        <source>Original</source>
        <translation>原图</translation>
    </message>
    <message>
        <source>Remove background color</source>
        <translation>去除底色</translation>
    </message>
    <message>
        <source>Binary</source>
        <translation>黑白</translation>
    </message>
    <message>
        <source>Enhance Color</source>
        <translation>色彩增强</translation>
    </message>
    <message>
        <source>Seal strengthen(Red)</source>
        <translation>印章增强（红）</translation>
    </message>
    <message>
        <source>Seal strengthen(Blue)</source>
        <translation>印章增强（蓝）</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>语言</translation>
    </message>
    <message>
        <source>As the system</source>
        <translation>跟随系统</translation>
    </message>
    <message>
        <source>Words that may be misread stand on yellow in the document, so that they can be checked.</source>
        <translation>可能识别有误的词语在文档中以黄色标出，便于核对。</translation>
    </message>
    <message>
        <source>Highlight doubtful words in recognised text</source>
        <translation>在识别的文字中标出存疑词语</translation>
    </message>
</context>
<context>
    <name>SetImage</name>
    <message>
        <source>Image Path</source>
        <translation>图片路径</translation>
    </message>
    <message>
        <source>Select Directory</source>
        <translation>选择文件夹</translation>
    </message>
    <message>
        <source>Image Format</source>
        <translation>图片格式</translation>
    </message>
    <message>
        <source>Scan Size</source>
        <translation>扫描幅面</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>自动</translation>
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
        <translation>双摄像头</translation>
    </message>
    <message>
        <source>Composite photo</source>
        <translation>合成拍照</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>位置</translation>
    </message>
    <message>
        <source>Top left</source>
        <translation>左上</translation>
    </message>
    <message>
        <source>Bottom left</source>
        <translation>左下</translation>
    </message>
    <message>
        <source>Top right</source>
        <translation>右上</translation>
    </message>
    <message>
        <source>Bottom right</source>
        <translation>右下</translation>
    </message>
    <message>
        <source>Scanner Sound:</source>
        <translation>拍照声音：</translation>
    </message>
    <message>
        <source>Book-Flat</source>
        <translation>书籍展平</translation>
    </message>
    <message>
        <source>Book-Line</source>
        <translation>书籍中线</translation>
    </message>
    <message>
        <source>remove finger</source>
        <translation>去除手指</translation>
    </message>
    <message>
        <source>Double page</source>
        <translation>双页</translation>
    </message>
    <message>
        <source>Doc-Proces</source>
        <translation>文档处理</translation>
    </message>
    <message>
        <source>Watermark:</source>
        <translation>水印：</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
    <message>
        <source>Time-watermark</source>
        <translation>时间水印</translation>
    </message>
    <message>
        <source>Watermark text</source>
        <translation>水印文字</translation>
    </message>
</context>
<context>
    <name>SetShortcut</name>
    <message>
        <source>Scanner:</source>
        <translation>拍照：</translation>
    </message>
    <message>
        <source>Document:</source>
        <translation>文档：</translation>
    </message>
    <message>
        <source>Book:</source>
        <translation>书籍扫描：</translation>
    </message>
    <message>
        <source>Press the keys</source>
        <translation>请按下快捷键</translation>
    </message>
    <message>
        <source>Not set</source>
        <translation>未设置</translation>
    </message>
    <message>
        <source>A marked text is no key combination. Right ones are written like Ctrl+S or Ctrl+Shift+F5.</source>
        <translation>标出的文字不是快捷键，正确的写法如 Ctrl+S 或 Ctrl+Shift+F5。</translation>
    </message>
    <message>
        <source>The keys of &quot;%1&quot; and &quot;%2&quot; are set in the file %3, as Shortcut_Document and Shortcut_Book. They hold from the next start.</source>
        <translation>“%1”和“%2”的快捷键在文件 %3 中设置，名称为 Shortcut_Document 和 Shortcut_Book，下次启动后生效。</translation>
    </message>
    <message>
        <source>The strip of pictures uses %1 too, and no longer gets it.</source>
        <translation>缩略图栏也使用 %1，设置后该键在缩略图栏中不再起作用。</translation>
    </message>
    <message>
        <source>%1 does not start &quot;%2&quot;, because &quot;%3&quot; has these keys.</source>
        <translation>%1 不能启动“%2”，因为该快捷键已用于“%3”。</translation>
    </message>
</context>
<context>
    <name>ShotHint</name>
    <message>
        <source>page leaves the picture</source>
        <translation>页面超出画面</translation>
    </message>
    <message>
        <source>page is moving</source>
        <translation>页面正在移动</translation>
    </message>
    <message>
        <source>too dark</source>
        <translation>光线太暗</translation>
    </message>
    <message>
        <source>too blurred</source>
        <translation>画面太模糊</translation>
    </message>
    <message>
        <source>reflection on the page</source>
        <translation>页面上有反光</translation>
    </message>
    <message>
        <source>edge of the page unclear</source>
        <translation>页面边缘不清楚</translation>
    </message>
</context>
<context>
    <name>Start</name>
    <message>
        <source>The program is already running but does not answer. Please end it, or wait a moment, and start again.</source>
        <translation>程序已在运行，但没有响应。请结束该程序，或稍候片刻，然后重新启动。</translation>
    </message>
</context>
<context>
    <name>TextScan</name>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>摄像头没有传来图像。</translation>
    </message>
    <message>
        <source>The text could not be written. The picture itself is saved.</source>
        <translation>无法写入文字文档。图片本身已保存。</translation>
    </message>
    <message>
        <source>No text was recognised. The picture itself is saved.</source>
        <translation>未识别到文字。图片本身已保存。</translation>
    </message>
    <message>
        <source>The text is being recognised.</source>
        <translation>正在识别文字。</translation>
    </message>
    <message>
        <source>The text is still being recognised.</source>
        <translation>仍在识别文字。</translation>
    </message>
    <message>
        <source>The recognition was cancelled. The picture itself is saved.</source>
        <translation>已取消文字识别。图片本身已保存。</translation>
    </message>
</context>
<context>
    <name>Thumbnail</name>
    <message>
        <source>Thumbnail</source>
        <translation>缩略图</translation>
    </message>
    <message>
        <source>Produced files</source>
        <translation>生成的文件</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>Open Directory</source>
        <translation>打开所在文件夹</translation>
    </message>
    <message>
        <source>Add Image</source>
        <translation>添加图片</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清空</translation>
    </message>
    <message>
        <source>Move up</source>
        <translation>上移</translation>
    </message>
    <message>
        <source>Move down</source>
        <translation>下移</translation>
    </message>
    <message>
        <source>Image files(*.jpg *.png *.bmp)</source>
        <translation>图片文件 (*.jpg *.png *.bmp)</translation>
    </message>
    <message>
        <source>%1 is no longer there.</source>
        <translation>%1 已不存在。</translation>
    </message>
    <message>
        <source>Not listed, because no picture can be read: %1</source>
        <translation>未列入，无法读取图片：%1</translation>
    </message>
</context>
<context>
    <name>ThumbnailDelegate</name>
    <message>
        <source>Working...</source>
        <translation>正在处理…</translation>
    </message>
</context>
<context>
    <name>ThumbnailDeletion</name>
    <message>
        <source>Undo</source>
        <translation>撤销</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) deleted</source>
        <translation>
            <numerusform>已删除 %n 个文件</numerusform>
        </translation>
    </message>
    <message>
        <source>Could not be deleted: %1</source>
        <translation>无法删除：%1</translation>
    </message>
    <message>
        <source>Brought back as %1: other files have the old names now.</source>
        <translation>已恢复为 %1：原来的名称已被其他文件占用。</translation>
    </message>
    <message>
        <source>Could not be brought back: %1</source>
        <translation>无法恢复：%1</translation>
    </message>
</context>
<context>
    <name>ThumbnailList</name>
    <message>
        <source>Page %1: %2</source>
        <translation>第 %1 页：%2</translation>
    </message>
</context>
<context>
    <name>TitleBar</name>
    <message>
        <source>Skin</source>
        <translation>皮肤</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>最大化</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>还原</translation>
    </message>
</context>
<context>
    <name>ToolBar</name>
    <message>
        <source>Device</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>型号</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>分辨率</translation>
    </message>
    <message>
        <source>Find, straighten and cut out the page</source>
        <translation>自动纠偏裁边</translation>
    </message>
    <message>
        <source>Crop and straighten all pages, cards and receipts side by side: one file each</source>
        <translation>裁切并校正并排放置的所有页面、证件和票据，每张保存为一个文件</translation>
    </message>
    <message>
        <source>Cut out the area drawn in the picture</source>
        <translation>按画面中框选的区域裁切</translation>
    </message>
    <message>
        <source>Second camera</source>
        <translation>副摄像头</translation>
    </message>
    <message>
        <source>Show the second camera in the picture</source>
        <translation>在画面中显示副摄像头</translation>
    </message>
    <message>
        <source>Fit to window</source>
        <translation>适应窗口</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>全屏</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>放大</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>缩小</translation>
    </message>
    <message>
        <source>Rotate left</source>
        <translation>向左旋转</translation>
    </message>
    <message>
        <source>Rotate right</source>
        <translation>向右旋转</translation>
    </message>
    <message>
        <source>Freeze the picture</source>
        <translation>画面定格</translation>
    </message>
    <message>
        <source>More tools</source>
        <translation>更多工具</translation>
    </message>
</context>
<context>
    <name>TuningControl</name>
    <message>
        <source>There is nothing to focus on at this place.</source>
        <translation>此处没有可供对焦的内容。</translation>
    </message>
</context>
<context>
    <name>VideoRecord</name>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Recording video:</source>
        <translation>正在录像：</translation>
    </message>
    <message>
        <source>Video Record</source>
        <translation>录像</translation>
    </message>
    <message>
        <source>Tip</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>Record finished</source>
        <translation>录像完成</translation>
    </message>
    <message>
        <source>Do you want to open the video directory?</source>
        <translation>是否打开录像所在文件夹？</translation>
    </message>
    <message>
        <source>Open Directory</source>
        <translation>打开所在文件夹</translation>
    </message>
    <message>
        <source>Finish</source>
        <translation>完成</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Recorded:</source>
        <translation>已录制：</translation>
    </message>
</context>
<context>
    <name>VideoView</name>
    <message>
        <source>Please waiting...</source>
        <translation>请稍候…</translation>
    </message>
</context>
<context>
    <name>WaitingSign</name>
    <message>
        <source>Waiting for a picture of the camera. Press Esc to give it up.</source>
        <translation>正在等待摄像头图像，按 Esc 键放弃。</translation>
    </message>
</context>
</TS>
