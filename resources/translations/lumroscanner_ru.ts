<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="en_US">
<context>
    <name>AssistControl</name>
    <message>
        <source>The second camera was disconnected.</source>
        <translation>Вторая камера отключена.</translation>
    </message>
    <message>
        <source>Tips</source>
        <translation>Подсказка</translation>
    </message>
    <message>
        <source>Please turn off the deskew function before using it again!</source>
        <translation>Сначала отключите выравнивание, затем повторите попытку!</translation>
    </message>
    <message>
        <source>There is no second camera.</source>
        <translation>Вторая камера не найдена.</translation>
    </message>
    <message>
        <source>The second camera cannot be opened.</source>
        <translation>Не удалось открыть вторую камеру.</translation>
    </message>
    <message>
        <source>Not in the captures: &quot;Composite photo&quot; is off.</source>
        <translation>Не попадёт на снимки: «Составной снимок» выключен.</translation>
    </message>
</context>
<context>
    <name>AutoScan</name>
    <message>
        <source>Pages taken:</source>
        <translation>Снято страниц:</translation>
    </message>
    <message>
        <source>Lay the next page under the camera.</source>
        <translation>Положите следующую страницу под камеру.</translation>
    </message>
    <message>
        <source>Pictures taken:</source>
        <translation>Сделано снимков:</translation>
    </message>
    <message>
        <source>Seconds to the next picture:</source>
        <translation>Секунд до следующего снимка:</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Стоп</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Ход выполнения</translation>
    </message>
</context>
<context>
    <name>BarCode</name>
    <message>
        <source>Contents of the codes</source>
        <translation>Содержимое штрихкодов</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Копировать</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>Codes</source>
        <translation>Штрихкоды</translation>
    </message>
</context>
<context>
    <name>BarcodeScan</name>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>Камера не передаёт изображение.</translation>
    </message>
    <message>
        <source>No code was found.</source>
        <translation>Штрихкод не найден.</translation>
    </message>
    <message>
        <source>The codes are still being read.</source>
        <translation>Штрихкоды ещё считываются.</translation>
    </message>
    <message>
        <source>The codes are being read.</source>
        <translation>Идёт считывание штрихкодов.</translation>
    </message>
    <message>
        <source>Reading the codes was cancelled. The picture itself is saved.</source>
        <translation>Считывание штрихкодов отменено. Сам снимок сохранён.</translation>
    </message>
</context>
<context>
    <name>BookScan</name>
    <message>
        <source>This device does not support this feature!</source>
        <translation>Это устройство не поддерживает данную функцию!</translation>
    </message>
    <message>
        <source>Please turn on the book-line first!</source>
        <translation>Сначала включите линию сгиба книги!</translation>
    </message>
    <message>
        <source>The book is still being flattened.</source>
        <translation>Книга ещё выпрямляется.</translation>
    </message>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>Камера не передаёт изображение.</translation>
    </message>
    <message>
        <source>The book is being flattened.</source>
        <translation>Страницы книги выпрямляются.</translation>
    </message>
    <message>
        <source>The flattening was cancelled. The picture itself is saved.</source>
        <translation>Выпрямление отменено. Сам снимок сохранён.</translation>
    </message>
    <message>
        <source>Book flat failed!</source>
        <translation>Не удалось выпрямить книгу!</translation>
    </message>
    <message>
        <source>A page of the book could not be saved. Please check the folder of the pictures.</source>
        <translation>Страницу книги не удалось сохранить. Проверьте папку снимков.</translation>
    </message>
</context>
<context>
    <name>BtnControl</name>
    <message>
        <source>More functions</source>
        <translation>Другие функции</translation>
    </message>
    <message>
        <source>PDF of picture files...</source>
        <translation>PDF из файлов изображений...</translation>
    </message>
    <message>
        <source>Hold down or right-click: PDF of picture files, text, PDF/A</source>
        <translation>Удержание или правая кнопка: PDF из файлов изображений, текст, PDF/A</translation>
    </message>
    <message>
        <source>With text</source>
        <translation>С текстом</translation>
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
        <translation>Камера не передаёт изображение.</translation>
    </message>
    <message>
        <source>The picture cannot be read back. Please try again.</source>
        <translation>Не удалось прочитать сохранённый снимок. Повторите попытку.</translation>
    </message>
    <message>
        <source>The first picture is taken. Lay the second side under the camera and press the button again.</source>
        <translation>Первый снимок сделан. Положите под камеру вторую сторону и нажмите кнопку ещё раз.</translation>
    </message>
    <message>
        <source>The merge was given up. The first picture stays in the list.</source>
        <translation>Объединение отменено. Первый снимок остался в списке.</translation>
    </message>
</context>
<context>
    <name>CompositeCapture</name>
    <message>
        <source>Tips</source>
        <translation>Подсказка</translation>
    </message>
    <message>
        <source>Please turn off deskew before using composite photo feature again</source>
        <translation>Отключите выравнивание, прежде чем снова делать составной снимок</translation>
    </message>
    <message>
        <source>One of the cameras delivers no picture.</source>
        <translation>Одна из камер не передаёт изображение.</translation>
    </message>
</context>
<context>
    <name>ConfigSet</name>
    <message>
        <source>Setting</source>
        <translation>Настройки</translation>
    </message>
    <message>
        <source>&amp;Global</source>
        <translation>&amp;Общие</translation>
    </message>
    <message>
        <source>&amp;Image</source>
        <translation>&amp;Снимки</translation>
    </message>
    <message>
        <source>Co&amp;ntinuous shooting</source>
        <translation>С&amp;ерийная съёмка</translation>
    </message>
    <message>
        <source>&amp;Shortcuts</source>
        <translation>&amp;Клавиши</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>О &amp;программе</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Закрыть</translation>
    </message>
</context>
<context>
    <name>ControlOverlay</name>
    <message>
        <source>Camera controls</source>
        <translation>Настройка камеры</translation>
    </message>
</context>
<context>
    <name>ControlPanel</name>
    <message>
        <source>Camera controls</source>
        <translation>Настройка камеры</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>Focus</source>
        <translation>Фокус</translation>
    </message>
    <message>
        <source>Exposure</source>
        <translation>Выдержка</translation>
    </message>
    <message>
        <source>Gain</source>
        <translation>Усиление</translation>
    </message>
    <message>
        <source>White balance</source>
        <translation>Баланс белого</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>Яркость</translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation>Контрастность</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>Насыщенность</translation>
    </message>
    <message>
        <source>Sharpness</source>
        <translation>Резкость</translation>
    </message>
    <message>
        <source>Backlight</source>
        <translation>Компенсация засветки</translation>
    </message>
    <message>
        <source>Anti-flicker</source>
        <translation>Подавление мерцания</translation>
    </message>
    <message>
        <source>As delivered</source>
        <translation>Заводские значения</translation>
    </message>
    <message>
        <source>Puts everything back to how the camera was delivered</source>
        <translation>Возвращает все параметры камеры к заводским</translation>
    </message>
    <message>
        <source>No camera is open.</source>
        <translation>Камера не открыта.</translation>
    </message>
    <message>
        <source>This camera offers nothing that can be set.</source>
        <translation>У этой камеры нет настраиваемых параметров.</translation>
    </message>
    <message>
        <source>A click on the picture focuses there.</source>
        <translation>Щёлкните по изображению, чтобы навести резкость в этом месте.</translation>
    </message>
</context>
<context>
    <name>ControlRow</name>
    <message>
        <source>Automatic</source>
        <translation>Авто</translation>
    </message>
    <message>
        <source>%1, automatic</source>
        <translation>%1, автоматически</translation>
    </message>
    <message>
        <source>Double click or Delete: as delivered (%1)</source>
        <translation>Двойной щелчок или Delete — заводское значение (%1)</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Выкл.</translation>
    </message>
    <message>
        <source>50 Hz</source>
        <translation>50 Гц</translation>
    </message>
    <message>
        <source>60 Hz</source>
        <translation>60 Гц</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 мс</translation>
    </message>
    <message>
        <source>%1 K</source>
        <translation>%1 К</translation>
    </message>
</context>
<context>
    <name>CropDialog</name>
    <message>
        <source>Crop</source>
        <translation>Обрезать</translation>
    </message>
    <message>
        <source>Whole picture</source>
        <translation>Всё изображение</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
</context>
<context>
    <name>CropView</name>
    <message>
        <source>Picture with the corners of the page</source>
        <translation>Изображение с углами страницы</translation>
    </message>
    <message>
        <source>Upper left corner</source>
        <translation>Левый верхний угол</translation>
    </message>
    <message>
        <source>Upper right corner</source>
        <translation>Правый верхний угол</translation>
    </message>
    <message>
        <source>Lower right corner</source>
        <translation>Правый нижний угол</translation>
    </message>
    <message>
        <source>Lower left corner</source>
        <translation>Левый нижний угол</translation>
    </message>
    <message>
        <source>The picture is being read...</source>
        <translation>Изображение загружается…</translation>
    </message>
</context>
<context>
    <name>DeviceControl</name>
    <message>
        <source>No found device!</source>
        <translation>Устройство не найдено!</translation>
    </message>
    <message>
        <source>Device create failed!</source>
        <translation>Не удалось открыть устройство!</translation>
    </message>
    <message>
        <source>Waring</source>
        <translation>Предупреждение</translation>
    </message>
    <message>
        <source>video create failed!</source>
        <translation>Не удалось запустить видео!</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Ошибка</translation>
    </message>
    <message>
        <source>The camera was disconnected.</source>
        <translation>Камера отключена.</translation>
    </message>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>Камера не передаёт изображение.</translation>
    </message>
    <message>
        <source>No document camera is connected. Another one can be chosen above.</source>
        <translation>Документ-камера не подключена. Другую камеру можно выбрать выше.</translation>
    </message>
    <message>
        <source>Waiting for permission to use %1...</source>
        <translation>Ожидание разрешения на использование камеры «%1»…</translation>
    </message>
    <message>
        <source>%1 is in use by another program. Waiting until it is free...</source>
        <translation>Камера «%1» занята другой программой. Ожидание, пока она освободится…</translation>
    </message>
    <message>
        <source>%1 does not start. Trying again...</source>
        <translation>Камера «%1» не запускается. Новая попытка…</translation>
    </message>
</context>
<context>
    <name>EntryBar</name>
    <message>
        <source>Change the file</source>
        <translation>Изменить файл</translation>
    </message>
    <message>
        <source>Rename (F2)</source>
        <translation>Переименовать (F2)</translation>
    </message>
    <message>
        <source>Turn left (Shift+R)</source>
        <translation>Повернуть влево (Shift+R)</translation>
    </message>
    <message>
        <source>Turn right (R)</source>
        <translation>Повернуть вправо (R)</translation>
    </message>
    <message>
        <source>Crop (C)</source>
        <translation>Обрезать (C)</translation>
    </message>
    <message>
        <source>Set straight (S)</source>
        <translation>Выровнять (S)</translation>
    </message>
    <message>
        <source>Undo (Ctrl+Z)</source>
        <translation>Отменить (Ctrl+Z)</translation>
    </message>
</context>
<context>
    <name>EntryName</name>
    <message>
        <source>New name</source>
        <translation>Новое имя</translation>
    </message>
</context>
<context>
    <name>FaceVerify</name>
    <message>
        <source>Live picture of the face</source>
        <translation>Живое изображение лица</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Результат</translation>
    </message>
    <message>
        <source>ReadCard</source>
        <translation>Считать карту</translation>
    </message>
    <message>
        <source>Scanner</source>
        <translation>Снимок</translation>
    </message>
    <message>
        <source>Verify</source>
        <translation>Сравнить</translation>
    </message>
    <message>
        <source>Live-Face</source>
        <translation>Живое лицо</translation>
    </message>
    <message>
        <source>One-Click-Verify</source>
        <translation>Проверка одним нажатием</translation>
    </message>
    <message>
        <source>Portrait of the card</source>
        <translation>Портрет на карте</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Имя:</translation>
    </message>
    <message>
        <source>Gender:</source>
        <translation>Пол:</translation>
    </message>
    <message>
        <source>Nation:</source>
        <translation>Народность:</translation>
    </message>
    <message>
        <source>Born:</source>
        <translation>Дата рождения:</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>год</translation>
    </message>
    <message>
        <source>Mon</source>
        <translation>мес.</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>день</translation>
    </message>
    <message>
        <source>Address:</source>
        <translation>Адрес:</translation>
    </message>
    <message>
        <source>Number:</source>
        <translation>Номер:</translation>
    </message>
    <message>
        <source>Department:</source>
        <translation>Кем выдана:</translation>
    </message>
    <message>
        <source>Valid Period:</source>
        <translation>Срок действия:</translation>
    </message>
    <message>
        <source>Face Verify</source>
        <translation>Проверка лица</translation>
    </message>
    <message>
        <source>The face camera was disconnected.</source>
        <translation>Камера для лиц отключена.</translation>
    </message>
    <message>
        <source>Init IDCard failed,this device may not support this feature!</source>
        <translation>Не удалось открыть считыватель карт, возможно, это устройство не поддерживает эту функцию!</translation>
    </message>
    <message>
        <source>There is no face camera.</source>
        <translation>Нет камеры для лиц.</translation>
    </message>
    <message>
        <source>The face camera cannot be opened. It may be in use.</source>
        <translation>Не удалось открыть камеру для лиц. Возможно, она занята.</translation>
    </message>
    <message>
        <source>Waiting for a picture of the face...</source>
        <translation>Ожидание снимка лица…</translation>
    </message>
    <message>
        <source>There is no new picture of the face.</source>
        <translation>Нового снимка лица нет.</translation>
    </message>
    <message>
        <source>The picture was taken.</source>
        <translation>Снимок сделан.</translation>
    </message>
    <message>
        <source>Reading the card...</source>
        <translation>Чтение карты…</translation>
    </message>
    <message>
        <source>Read idcard failed!</source>
        <translation>Не удалось прочитать карту!</translation>
    </message>
    <message>
        <source>ID card info is empty.</source>
        <translation>Данные карты пусты.</translation>
    </message>
    <message>
        <source>The face library cannot be used on this computer!</source>
        <translation>Библиотеку распознавания лиц нельзя использовать на этом компьютере!</translation>
    </message>
    <message>
        <source>Comparing the faces...</source>
        <translation>Сравнение лиц…</translation>
    </message>
    <message>
        <source>Face comparison failed, score:%1</source>
        <translation>Лица не совпали, оценка: %1</translation>
    </message>
    <message>
        <source>Face comparison success, score:%1</source>
        <translation>Лица совпали, оценка: %1</translation>
    </message>
    <message>
        <source>No card has been read.</source>
        <translation>Карта не считана.</translation>
    </message>
    <message>
        <source>Looking at the face...</source>
        <translation>Проверка лица…</translation>
    </message>
    <message>
        <source>This is not a living face.</source>
        <translation>Это не живое лицо.</translation>
    </message>
    <message>
        <source>This is a living face.</source>
        <translation>Это живое лицо.</translation>
    </message>
    <message>
        <source>Please confirm that your ID card is in the card reading position, your face is in the center of the video screen, and then click the confirm button</source>
        <translation>Убедитесь, что карта лежит на считывателе, а лицо находится в центре изображения, и нажмите кнопку подтверждения</translation>
    </message>
</context>
<context>
    <name>FignerPrint</name>
    <message>
        <source>Fingerprint</source>
        <translation>Отпечаток пальца</translation>
    </message>
    <message>
        <source>Take fingerprint</source>
        <translation>Снять отпечаток</translation>
    </message>
    <message>
        <source>Change mode</source>
        <translation>Сменить режим</translation>
    </message>
    <message>
        <source>FingerPrint</source>
        <translation>Отпечаток пальца</translation>
    </message>
    <message>
        <source>Open FP device failed</source>
        <translation>Не удалось открыть сканер отпечатков</translation>
    </message>
    <message>
        <source>Please put your finger on it</source>
        <translation>Приложите палец к сканеру</translation>
    </message>
    <message>
        <source>Get FP data Success</source>
        <translation>Отпечаток получен</translation>
    </message>
    <message>
        <source>Read FP data timeout</source>
        <translation>Время ожидания отпечатка истекло</translation>
    </message>
    <message>
        <source>The sensor does not answer any more.</source>
        <translation>Сканер отпечатков больше не отвечает.</translation>
    </message>
    <message>
        <source>The picture could not be saved. Please check the folder %1.</source>
        <translation>Не удалось сохранить снимок. Проверьте папку %1.</translation>
    </message>
    <message>
        <source>The mode stays as it is.</source>
        <translation>Режим не изменён.</translation>
    </message>
    <message>
        <source>Mode %1 holds from the next start on.</source>
        <translation>Режим %1 начнёт действовать со следующего запуска.</translation>
    </message>
</context>
<context>
    <name>FileHandover</name>
    <message>
        <source>No program opens %1.</source>
        <translation>Нет программы, которая открывает %1.</translation>
    </message>
    <message>
        <source>The folder %1 could not be opened.</source>
        <translation>Не удалось открыть папку %1.</translation>
    </message>
    <message>
        <source>Only pictures can be printed.</source>
        <translation>Печатать можно только изображения.</translation>
    </message>
    <message>
        <source>The picture could not be printed.</source>
        <translation>Не удалось напечатать изображение.</translation>
    </message>
</context>
<context>
    <name>FirstSide</name>
    <message>
        <source>First side</source>
        <translation>Первая сторона</translation>
    </message>
    <message>
        <source>Give up the merge</source>
        <translation>Отменить объединение</translation>
    </message>
    <message>
        <source>Give up the merge (Esc)</source>
        <translation>Отменить объединение (Esc)</translation>
    </message>
</context>
<context>
    <name>FrozenBar</name>
    <message>
        <source>Save the frozen picture</source>
        <translation>Сохранить этот кадр</translation>
    </message>
    <message>
        <source>Frozen. Captures save the live page.</source>
        <translation>Изображение остановлено. Снимки делаются с живой картинки.</translation>
    </message>
</context>
<context>
    <name>FunctionButtons</name>
    <message>
        <source>Capture</source>
        <translation>Снимок</translation>
    </message>
    <message>
        <source>Document</source>
        <translation>Документ</translation>
    </message>
    <message>
        <source>Barcode</source>
        <translation>Штрихкод</translation>
    </message>
    <message>
        <source>Merge images</source>
        <translation>Объединение снимков</translation>
    </message>
    <message>
        <source>Merge card</source>
        <translation>Объединение сторон карты</translation>
    </message>
    <message>
        <source>Record video</source>
        <translation>Запись видео</translation>
    </message>
    <message>
        <source>Continuous shooting</source>
        <translation>Серийная съёмка</translation>
    </message>
    <message>
        <source>Recognize text (OCR)</source>
        <translation>Распознавание текста (OCR)</translation>
    </message>
    <message>
        <source>Read ID card</source>
        <translation>Чтение ID-карты</translation>
    </message>
    <message>
        <source>Print receipt</source>
        <translation>Печать чека</translation>
    </message>
    <message>
        <source>Make PDF</source>
        <translation>Создать PDF</translation>
    </message>
    <message>
        <source>Multi-page PDF</source>
        <translation>Многостраничный PDF</translation>
    </message>
    <message>
        <source>Sign</source>
        <translation>Подпись</translation>
    </message>
    <message>
        <source>Fingerprint</source>
        <translation>Отпечаток пальца</translation>
    </message>
    <message>
        <source>Scan book</source>
        <translation>Сканирование книги</translation>
    </message>
    <message>
        <source>Verify face</source>
        <translation>Проверка лица</translation>
    </message>
    <message>
        <source>Burn-in test</source>
        <translation>Стресс-тест</translation>
    </message>
</context>
<context>
    <name>IdCardReader</name>
    <message>
        <source>IDCard Read System</source>
        <translation>Система чтения ID-карт</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>Лицевая сторона</translation>
    </message>
    <message>
        <source>Name</source>
        <comment>of a person</comment>
        <translation>Имя</translation>
    </message>
    <message>
        <source>Gender</source>
        <translation>Пол</translation>
    </message>
    <message>
        <source>Nation</source>
        <translation>Народность</translation>
    </message>
    <message>
        <source>Born</source>
        <translation>Дата рождения</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>год</translation>
    </message>
    <message>
        <source>Mon</source>
        <translation>мес.</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>день</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Адрес</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Номер</translation>
    </message>
    <message>
        <source>Opposite</source>
        <translation>Оборотная сторона</translation>
    </message>
    <message>
        <source>Department</source>
        <translation>Кем выдана</translation>
    </message>
    <message>
        <source>Valid Period</source>
        <translation>Срок действия</translation>
    </message>
    <message>
        <source>Path</source>
        <translation>Путь</translation>
    </message>
    <message>
        <source>Tip:</source>
        <translation>Подсказка:</translation>
    </message>
    <message>
        <source>Browse</source>
        <translation>Обзор</translation>
    </message>
    <message>
        <source>Read</source>
        <translation>Читать</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Стоп</translation>
    </message>
    <message>
        <source>Read2</source>
        <translation>Читать 2</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Сохранить</translation>
    </message>
    <message>
        <source>ID Card Reader</source>
        <translation>Чтение ID-карт</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Ошибка</translation>
    </message>
    <message>
        <source>Init IDCard failed!</source>
        <translation>Не удалось подготовить считыватель ID-карт!</translation>
    </message>
    <message>
        <source>Please select the save path</source>
        <translation>Выберите папку для сохранения</translation>
    </message>
    <message>
        <source>Reading the card ...</source>
        <translation>Чтение карты...</translation>
    </message>
    <message>
        <source>No card reader is attached.</source>
        <translation>Считыватель карт не подключён.</translation>
    </message>
    <message>
        <source>The card could not be read. Please lift it and lay it on again.</source>
        <translation>Карту не удалось прочитать. Уберите её и положите снова.</translation>
    </message>
    <message>
        <source>The card has been read. Please lay on the next one.</source>
        <translation>Карта прочитана. Положите следующую.</translation>
    </message>
    <message>
        <source>Please lay a card on the reader.</source>
        <translation>Положите карту на считыватель.</translation>
    </message>
    <message>
        <source>Please lay a card on the reader and press &quot;Read&quot;.</source>
        <translation>Положите карту на считыватель и нажмите «Читать».</translation>
    </message>
    <message>
        <source>The card has been saved.</source>
        <translation>Данные карты сохранены.</translation>
    </message>
    <message>
        <source>The portrait could not be saved.</source>
        <translation>Не удалось сохранить фотографию.</translation>
    </message>
    <message>
        <source>The card could not be saved. Please check the file.</source>
        <translation>Не удалось сохранить данные карты. Проверьте файл.</translation>
    </message>
</context>
<context>
    <name>ImageMerge</name>
    <message>
        <source>Image Merge</source>
        <translation>Объединение снимков</translation>
    </message>
    <message>
        <source>Left-Right Merge</source>
        <translation>Слева направо</translation>
    </message>
    <message>
        <source>Up-Down Merge</source>
        <translation>Сверху вниз</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Промежуток</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Сохранить</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>Merge Images failed!</source>
        <translation>Не удалось объединить снимки!</translation>
    </message>
    <message>
        <source>There is no picture to save.</source>
        <translation>Нет изображения для сохранения.</translation>
    </message>
    <message>
        <source>The merged picture has not been saved. Close without saving it?</source>
        <translation>Объединённый снимок не сохранён. Закрыть без сохранения?</translation>
    </message>
</context>
<context>
    <name>JobBar</name>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Страница %1 из %2</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Being cancelled...</source>
        <translation>Отмена...</translation>
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
        <translation>Настройки</translation>
    </message>
    <message>
        <source>Tips</source>
        <translation>Подсказка</translation>
    </message>
    <message>
        <source>Restart the software to take effect!</source>
        <translation>Перезапустите программу, чтобы изменения вступили в силу!</translation>
    </message>
    <message>
        <source>The program is already running.</source>
        <translation>Программа уже запущена.</translation>
    </message>
</context>
<context>
    <name>MainDesk</name>
    <message>
        <source>Please complete the image merge first!</source>
        <translation>Сначала завершите объединение снимков!</translation>
    </message>
    <message>
        <source>%1 of %2 pages could not be saved. Please check the folder %3.</source>
        <translation>Не удалось сохранить страниц: %1 из %2. Проверьте папку %3.</translation>
    </message>
    <message>
        <source>The picture could not be saved. Please check the folder %1.</source>
        <translation>Не удалось сохранить снимок. Проверьте папку %1.</translation>
    </message>
    <message>
        <source>No found device!</source>
        <translation>Устройство не найдено!</translation>
    </message>
</context>
<context>
    <name>More</name>
    <message>
        <source>More</source>
        <translation>Ещё</translation>
    </message>
    <message>
        <source>Select:</source>
        <translation>Выбор:</translation>
    </message>
</context>
<context>
    <name>MoveVideoView</name>
    <message>
        <source>Please waiting...</source>
        <translation>Подождите…</translation>
    </message>
</context>
<context>
    <name>MoveVideoWidget</name>
    <message>
        <source>Second camera</source>
        <translation>Вторая камера</translation>
    </message>
</context>
<context>
    <name>MsgBox</name>
    <message>
        <source>MsgBox</source>
        <translation>Сообщение</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>ОК</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>warnning</source>
        <translation>Предупреждение</translation>
    </message>
    <message>
        <source>error</source>
        <translation>Ошибка</translation>
    </message>
    <message>
        <source>Question</source>
        <translation>Вопрос</translation>
    </message>
</context>
<context>
    <name>NamedFiles</name>
    <message numerus="yes">
        <source>%1 and %n more</source>
        <translation>
            <numerusform>%1 и ещё %n</numerusform>
            <numerusform>%1 и ещё %n</numerusform>
            <numerusform>%1 и ещё %n</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>PdfEx</name>
    <message>
        <source>PDFEX</source>
        <translation>Многостраничный PDF</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>Вручную</translation>
    </message>
    <message>
        <source>AddImages</source>
        <translation>Добавить</translation>
    </message>
    <message>
        <source>Scanner</source>
        <translation>Снимок</translation>
    </message>
    <message>
        <source>Open-path</source>
        <translation>Открыть папку</translation>
    </message>
    <message>
        <source>Pdf</source>
        <translation>Создать PDF</translation>
    </message>
    <message>
        <source>Image files(*.jpg *.png *.bmp)</source>
        <translation>Файлы изображений (*.jpg *.png *.bmp)</translation>
    </message>
    <message>
        <source>There are no pages yet.</source>
        <translation>Страниц пока нет.</translation>
    </message>
    <message>
        <source>The PDF is being written...</source>
        <translation>Выполняется запись PDF...</translation>
    </message>
    <message>
        <source>Not in the PDF: %1. Only files whose names end in jpg, jpeg or png, in small letters, become pages.</source>
        <translation>Не входит в PDF: %1. Страницами становятся только файлы с окончанием jpg, jpeg или png строчными буквами.</translation>
    </message>
    <message>
        <source>No PDF was written, because this cannot be read: %1. Take it out of the list or put it right, then try again.</source>
        <translation>PDF не создан: не читается %1. Уберите из списка или исправьте и повторите.</translation>
    </message>
    <message>
        <source>The PDF could not be written. The pages stay in the list. Please check the folder.</source>
        <translation>Не удалось записать PDF. Страницы остались в списке. Проверьте папку.</translation>
    </message>
    <message>
        <source>The PDF is written.</source>
        <translation>PDF записан.</translation>
    </message>
    <message>
        <source>The list of pages is not in a PDF yet. Close and give up the list? The picture files stay.</source>
        <translation>Список страниц ещё не записан в PDF. Закрыть и отказаться от списка? Файлы снимков останутся.</translation>
    </message>
    <message>
        <source>Cancelled: no PDF was written. The pages stay in the list.</source>
        <translation>Отменено: PDF не записан. Страницы остались в списке.</translation>
    </message>
    <message>
        <source>With text</source>
        <translation>С текстом</translation>
    </message>
    <message>
        <source>The recognised text lies invisibly over the pictures: the PDF can be searched and its words copied.</source>
        <translation>Распознанный текст невидимо лежит поверх изображений: в PDF можно искать, а слова копировать.</translation>
    </message>
    <message>
        <source>PDF/A-2b</source>
        <translation>PDF/A-2b</translation>
    </message>
    <message>
        <source>The form of PDF for archives: everything needed to show it is in the file.</source>
        <translation>Форма PDF для архивов: всё, что нужно для показа, находится в файле.</translation>
    </message>
</context>
<context>
    <name>PdfExControl</name>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>Камера не передаёт изображение.</translation>
    </message>
    <message>
        <source>The picture could not be saved.</source>
        <translation>Не удалось сохранить снимок.</translation>
    </message>
</context>
<context>
    <name>PdfScan</name>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>Камера не передаёт изображение.</translation>
    </message>
    <message>
        <source>The PDF could not be made. The picture itself is saved.</source>
        <translation>Не удалось создать PDF. Сам снимок сохранён.</translation>
    </message>
</context>
<context>
    <name>PdfSynthesis</name>
    <message>
        <source>Image files(*.jpg *.png *.bmp)</source>
        <translation>Файлы изображений (*.jpg *.png *.bmp)</translation>
    </message>
    <message>
        <source>Save PDF path</source>
        <translation>Сохранить PDF</translation>
    </message>
    <message>
        <source>PDF(*.pdf)</source>
        <translation>PDF(*.pdf)</translation>
    </message>
    <message>
        <source>The PDF could not be written.</source>
        <translation>Не удалось записать PDF.</translation>
    </message>
    <message>
        <source>Tip</source>
        <translation>Подсказка</translation>
    </message>
    <message>
        <source>PDF</source>
        <translation>PDF</translation>
    </message>
    <message>
        <source>Do you want to open the PDF directory?</source>
        <translation>Открыть папку с PDF?</translation>
    </message>
    <message>
        <source>Open PDF directory</source>
        <translation>Открыть папку с PDF</translation>
    </message>
    <message>
        <source>Finish</source>
        <translation>Готово</translation>
    </message>
    <message>
        <source>%1 could not be read. No PDF was made.</source>
        <translation>Не удалось прочитать %1. PDF не создан.</translation>
    </message>
    <message>
        <source>%1 could not be read. The PDF holds the pages before it.</source>
        <translation>Не удалось прочитать %1. В PDF вошли страницы до этого файла.</translation>
    </message>
    <message>
        <source>A PDF is still being written.</source>
        <translation>Другой PDF ещё записывается.</translation>
    </message>
    <message>
        <source>The PDF is being written...</source>
        <translation>Выполняется запись PDF...</translation>
    </message>
    <message>
        <source>Cancelled: no PDF was written.</source>
        <translation>Отменено: PDF не записан.</translation>
    </message>
</context>
<context>
    <name>PdfTexts</name>
    <message>
        <source>The text of the PDF is being recognised.</source>
        <translation>Распознаётся текст PDF.</translation>
    </message>
    <message>
        <source>No text was found in the PDF. It stays as it is.</source>
        <translation>В PDF не найден текст. Файл остаётся без изменений.</translation>
    </message>
    <message>
        <source>Cancelled: the PDF stays without text.</source>
        <translation>Отменено: PDF остаётся без текста.</translation>
    </message>
    <message>
        <source>The text could not be recognised. The PDF stays without text.</source>
        <translation>Не удалось распознать текст. PDF остаётся без текста.</translation>
    </message>
    <message>
        <source>The PDF or its pictures were changed meanwhile. It stays without text.</source>
        <translation>PDF или его изображения были тем временем изменены. Он остаётся без текста.</translation>
    </message>
    <message>
        <source>The text could not be written. The PDF stays without text.</source>
        <translation>Не удалось записать текст. PDF остаётся без текста.</translation>
    </message>
</context>
<context>
    <name>PdfView</name>
    <message>
        <source>The picture stands still: the camera delivers no new one.</source>
        <translation>Изображение не обновляется: камера не передаёт новых кадров.</translation>
    </message>
</context>
<context>
    <name>PictureEdits</name>
    <message>
        <source>%1 is straight already.</source>
        <translation>Файл %1 уже выровнен.</translation>
    </message>
    <message>
        <source>%1 could not be changed.</source>
        <translation>Не удалось изменить файл %1.</translation>
    </message>
    <message>
        <source>%1 was changed by another program meanwhile and stays so.</source>
        <translation>Файл %1 тем временем изменила другая программа, он остался как есть.</translation>
    </message>
    <message>
        <source>A file needs a name.</source>
        <translation>Введите имя файла.</translation>
    </message>
    <message>
        <source>A name may not begin with a dot or contain a slash.</source>
        <translation>Имя не может начинаться с точки и содержать косую черту.</translation>
    </message>
    <message>
        <source>There is already a file of the name %1.</source>
        <translation>Файл с именем %1 уже есть.</translation>
    </message>
    <message>
        <source>%1 could not be renamed.</source>
        <translation>Не удалось переименовать файл %1.</translation>
    </message>
</context>
<context>
    <name>PrinterWidget</name>
    <message>
        <source>Printers</source>
        <translation>Принтеры</translation>
    </message>
    <message>
        <source>Text to print</source>
        <translation>Текст для печати</translation>
    </message>
    <message>
        <source>Size of the letters</source>
        <translation>Размер букв</translation>
    </message>
    <message>
        <source>Printing...</source>
        <translation>Идёт печать...</translation>
    </message>
    <message>
        <source>选择打印图片</source>
        <translation>Выберите изображение для печати</translation>
    </message>
    <message>
        <source>Images (*.jpg *.bmp *.png)</source>
        <translation>Изображения (*.jpg *.bmp *.png)</translation>
    </message>
    <message>
        <source>The picture cannot be read.</source>
        <translation>Не удалось прочитать изображение.</translation>
    </message>
    <message>
        <source>The picture is too high for its width: it would need more than 8 m of paper.</source>
        <translation>Изображение слишком высокое для своей ширины: понадобилось бы больше 8 м бумаги.</translation>
    </message>
</context>
<context>
    <name>RecordControl</name>
    <message>
        <source>Tips</source>
        <translation>Подсказка</translation>
    </message>
    <message>
        <source>Recording stopped, please adjust the resolution to 1600 * 1200</source>
        <translation>Запись остановлена, установите разрешение 1600 * 1200</translation>
    </message>
    <message>
        <source>The video could not be recorded.</source>
        <translation>Не удалось записать видео.</translation>
    </message>
    <message>
        <source>The recording goes on. The video button shows its window again.</source>
        <translation>Запись продолжается. Кнопка «Запись видео» снова покажет её окно.</translation>
    </message>
    <message>
        <source>Nothing was recorded: the camera delivered no picture.</source>
        <translation>Ничего не записано: камера не передала изображение.</translation>
    </message>
    <message>
        <source>The camera delivers no picture. The recording has ended; the video until then is saved.</source>
        <translation>Камера не передаёт изображение. Запись завершена; видео до этого момента сохранено.</translation>
    </message>
    <message>
        <source>The disk is full or cannot be written. The recording has ended; the video until then is saved.</source>
        <translation>Диск заполнен или недоступен для записи. Запись завершена; видео до этого момента сохранено.</translation>
    </message>
    <message>
        <source>The video encoder failed. The recording has ended; the video until then is saved.</source>
        <translation>Сбой видеокодера. Запись завершена; видео до этого момента сохранено.</translation>
    </message>
    <message>
        <source>The camera delivers no picture; the video shows the last one.</source>
        <translation>Камера не передаёт изображение; в видео остаётся последний кадр.</translation>
    </message>
    <message>
        <source>The video could not be recorded. Please check the folder %1.</source>
        <translation>Не удалось записать видео. Проверьте папку %1.</translation>
    </message>
    <message>
        <source>The picture of this camera is too large for a film: choose at most 1600 x 1200.</source>
        <translation>Изображение этой камеры слишком велико для видео: выберите разрешение не больше 1600 x 1200.</translation>
    </message>
    <message>
        <source>Record at %1 x %2</source>
        <translation>Запись %1 x %2</translation>
    </message>
    <message>
        <source>The video is saved. It is being put into a form that plays everywhere at once.</source>
        <translation>Видео сохранено. Выполняется подготовка, чтобы оно всюду воспроизводилось сразу.</translation>
    </message>
    <message>
        <source>Cancelled. The video is saved and plays as it is.</source>
        <translation>Отменено. Видео сохранено и воспроизводится.</translation>
    </message>
</context>
<context>
    <name>RecordingMark</name>
    <message>
        <source>Recording, %1</source>
        <translation>Идёт запись, %1</translation>
    </message>
</context>
<context>
    <name>ScanControl</name>
    <message>
        <source>Auto Scan</source>
        <translation>Автосъёмка</translation>
    </message>
    <message>
        <source>Timer Scan</source>
        <translation>Съёмка по таймеру</translation>
    </message>
</context>
<context>
    <name>ScanModes</name>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>Камера не передаёт изображение.</translation>
    </message>
</context>
<context>
    <name>SetAbout</name>
    <message>
        <source>Name</source>
        <translation>Название</translation>
    </message>
    <message>
        <source>Lumro High Speed Portable Scanner</source>
        <translation>Скоростной портативный сканер Lumro</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Версия</translation>
    </message>
</context>
<context>
    <name>SetAutoPage</name>
    <message>
        <source>Continuous shooting</source>
        <translation>Серийная съёмка</translation>
    </message>
    <message>
        <source>AutoScan</source>
        <translation>Автосъёмка</translation>
    </message>
    <message>
        <source>Takes a picture when a new page lies still.</source>
        <translation>Снимает, когда новая страница лежит неподвижно.</translation>
    </message>
    <message>
        <source>TimerScan</source>
        <translation>Съёмка по таймеру</translation>
    </message>
    <message>
        <source>Takes a picture at equal intervals.</source>
        <translation>Снимает через равные промежутки времени.</translation>
    </message>
    <message>
        <source>Interval in seconds</source>
        <translation>Интервал в секундах</translation>
    </message>
</context>
<context>
    <name>SetGlobal</name>
    <message>
        <source>Naming Rules</source>
        <translation>Правила именования</translation>
    </message>
    <message>
        <source>Custom + serial number</source>
        <translation>Имя + порядковый номер</translation>
    </message>
    <message>
        <source>Name prefix:</source>
        <translation>Начало имени:</translation>
    </message>
    <message>
        <source>001.jpg</source>
        <translation>001.jpg</translation>
    </message>
    <message>
        <source>Date + Time</source>
        <translation>Дата + время</translation>
    </message>
    <message>
        <source>20230101_time</source>
        <translation>20230101_время</translation>
    </message>
    <message>
        <source>Create dir by date</source>
        <translation>Создавать папки по датам</translation>
    </message>
    <message>
        <source>Scan Type</source>
        <translation>Тип сканирования</translation>
    </message>
    <message>
        <source>Original</source>
        <translation>Оригинал</translation>
    </message>
    <message>
        <source>Remove background color</source>
        <translation>Убрать цвет фона</translation>
    </message>
    <message>
        <source>Binary</source>
        <translation>Чёрно-белый</translation>
    </message>
    <message>
        <source>Enhance Color</source>
        <translation>Усилить цвета</translation>
    </message>
    <message>
        <source>Seal strengthen(Red)</source>
        <translation>Выделить печать (красную)</translation>
    </message>
    <message>
        <source>Seal strengthen(Blue)</source>
        <translation>Выделить печать (синюю)</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Язык</translation>
    </message>
    <message>
        <source>As the system</source>
        <translation>Как в системе</translation>
    </message>
    <message>
        <source>Words that may be misread stand on yellow in the document, so that they can be checked.</source>
        <translation>Слова, которые могли быть прочитаны неверно, выделены в документе жёлтым, чтобы их можно было проверить.</translation>
    </message>
    <message>
        <source>Highlight doubtful words in recognised text</source>
        <translation>Выделять сомнительные слова в распознанном тексте</translation>
    </message>
</context>
<context>
    <name>SetImage</name>
    <message>
        <source>Image Path</source>
        <translation>Папка снимков</translation>
    </message>
    <message>
        <source>Select Directory</source>
        <translation>Выбор папки</translation>
    </message>
    <message>
        <source>Image Format</source>
        <translation>Формат файла</translation>
    </message>
    <message>
        <source>Scan Size</source>
        <translation>Формат листа</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Авто</translation>
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
        <translation>Две камеры</translation>
    </message>
    <message>
        <source>Composite photo</source>
        <translation>Составной снимок</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>Место</translation>
    </message>
    <message>
        <source>Top left</source>
        <translation>Слева вверху</translation>
    </message>
    <message>
        <source>Bottom left</source>
        <translation>Слева внизу</translation>
    </message>
    <message>
        <source>Top right</source>
        <translation>Справа вверху</translation>
    </message>
    <message>
        <source>Bottom right</source>
        <translation>Справа внизу</translation>
    </message>
    <message>
        <source>Scanner Sound:</source>
        <translation>Звук съёмки:</translation>
    </message>
    <message>
        <source>Book-Flat</source>
        <translation>Выпрямление книги</translation>
    </message>
    <message>
        <source>Book-Line</source>
        <translation>Линия сгиба книги</translation>
    </message>
    <message>
        <source>remove finger</source>
        <translation>Убрать пальцы</translation>
    </message>
    <message>
        <source>Double page</source>
        <translation>Разворот</translation>
    </message>
    <message>
        <source>Doc-Proces</source>
        <translation>Обработка документа</translation>
    </message>
    <message>
        <source>Watermark:</source>
        <translation>Водяной знак:</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Нет</translation>
    </message>
    <message>
        <source>Time-watermark</source>
        <translation>Отметка времени</translation>
    </message>
    <message>
        <source>Watermark text</source>
        <translation>Текст знака</translation>
    </message>
</context>
<context>
    <name>SetShortcut</name>
    <message>
        <source>Scanner:</source>
        <translation>Снимок:</translation>
    </message>
    <message>
        <source>Document:</source>
        <translation>Документ:</translation>
    </message>
    <message>
        <source>Book:</source>
        <translation>Сканирование книги:</translation>
    </message>
    <message>
        <source>Press the keys</source>
        <translation>Нажмите клавиши</translation>
    </message>
    <message>
        <source>Not set</source>
        <translation>Не задано</translation>
    </message>
    <message>
        <source>A marked text is no key combination. Right ones are written like Ctrl+S or Ctrl+Shift+F5.</source>
        <translation>Отмеченный текст не является сочетанием клавиш. Пример правильной записи: Ctrl+S или Ctrl+Shift+F5.</translation>
    </message>
    <message>
        <source>The keys of &quot;%1&quot; and &quot;%2&quot; are set in the file %3, as Shortcut_Document and Shortcut_Book. They hold from the next start.</source>
        <translation>Клавиши для «%1» и «%2» задаются в файле %3 параметрами Shortcut_Document и Shortcut_Book и действуют со следующего запуска.</translation>
    </message>
    <message>
        <source>The strip of pictures uses %1 too, and no longer gets it.</source>
        <translation>%1 используется и в ленте снимков, где больше не будет действовать.</translation>
    </message>
    <message>
        <source>%1 does not start &quot;%2&quot;, because &quot;%3&quot; has these keys.</source>
        <translation>%1 не запускает «%2»: это сочетание занято функцией «%3».</translation>
    </message>
</context>
<context>
    <name>ShotHint</name>
    <message>
        <source>page leaves the picture</source>
        <translation>страница выходит за кадр</translation>
    </message>
    <message>
        <source>page is moving</source>
        <translation>страница движется</translation>
    </message>
    <message>
        <source>too dark</source>
        <translation>слишком темно</translation>
    </message>
    <message>
        <source>too blurred</source>
        <translation>слишком нерезко</translation>
    </message>
    <message>
        <source>reflection on the page</source>
        <translation>блик на странице</translation>
    </message>
    <message>
        <source>edge of the page unclear</source>
        <translation>край страницы неясен</translation>
    </message>
</context>
<context>
    <name>Start</name>
    <message>
        <source>The program is already running but does not answer. Please end it, or wait a moment, and start again.</source>
        <translation>Программа уже запущена, но не отвечает. Завершите её или немного подождите, а затем запустите снова.</translation>
    </message>
</context>
<context>
    <name>TextScan</name>
    <message>
        <source>The camera delivers no picture.</source>
        <translation>Камера не передаёт изображение.</translation>
    </message>
    <message>
        <source>The text could not be written. The picture itself is saved.</source>
        <translation>Не удалось записать текст. Сам снимок сохранён.</translation>
    </message>
    <message>
        <source>No text was recognised. The picture itself is saved.</source>
        <translation>Текст не распознан. Сам снимок сохранён.</translation>
    </message>
    <message>
        <source>The text is being recognised.</source>
        <translation>Идёт распознавание текста.</translation>
    </message>
    <message>
        <source>The text is still being recognised.</source>
        <translation>Текст ещё распознаётся.</translation>
    </message>
    <message>
        <source>The recognition was cancelled. The picture itself is saved.</source>
        <translation>Распознавание отменено. Сам снимок сохранён.</translation>
    </message>
</context>
<context>
    <name>Thumbnail</name>
    <message>
        <source>Thumbnail</source>
        <translation>Миниатюры</translation>
    </message>
    <message>
        <source>Produced files</source>
        <translation>Созданные файлы</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Открыть</translation>
    </message>
    <message>
        <source>Open Directory</source>
        <translation>Открыть папку</translation>
    </message>
    <message>
        <source>Add Image</source>
        <translation>Добавить изображение</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Очистить</translation>
    </message>
    <message>
        <source>Move up</source>
        <translation>Переместить вверх</translation>
    </message>
    <message>
        <source>Move down</source>
        <translation>Переместить вниз</translation>
    </message>
    <message>
        <source>Image files(*.jpg *.png *.bmp)</source>
        <translation>Файлы изображений (*.jpg *.png *.bmp)</translation>
    </message>
    <message>
        <source>%1 is no longer there.</source>
        <translation>Файла %1 больше нет на месте.</translation>
    </message>
    <message>
        <source>Not listed, because no picture can be read: %1</source>
        <translation>Не добавлено, изображение не читается: %1</translation>
    </message>
</context>
<context>
    <name>ThumbnailDelegate</name>
    <message>
        <source>Working...</source>
        <translation>Обработка…</translation>
    </message>
</context>
<context>
    <name>ThumbnailDeletion</name>
    <message>
        <source>Undo</source>
        <translation>Вернуть</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) deleted</source>
        <translation>
            <numerusform>Удалён %n файл</numerusform>
            <numerusform>Удалено %n файла</numerusform>
            <numerusform>Удалено %n файлов</numerusform>
        </translation>
    </message>
    <message>
        <source>Could not be deleted: %1</source>
        <translation>Не удалось удалить: %1</translation>
    </message>
    <message>
        <source>Brought back as %1: other files have the old names now.</source>
        <translation>Возвращено под именем %1: прежнее имя занято другим файлом.</translation>
    </message>
    <message>
        <source>Could not be brought back: %1</source>
        <translation>Не удалось вернуть: %1</translation>
    </message>
</context>
<context>
    <name>ThumbnailList</name>
    <message>
        <source>Page %1: %2</source>
        <translation>Страница %1: %2</translation>
    </message>
</context>
<context>
    <name>TitleBar</name>
    <message>
        <source>Skin</source>
        <translation>Оформление</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Свернуть</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>Развернуть</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Восстановить</translation>
    </message>
</context>
<context>
    <name>ToolBar</name>
    <message>
        <source>Device</source>
        <translation>Устройство</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Модель</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Разрешение</translation>
    </message>
    <message>
        <source>Find, straighten and cut out the page</source>
        <translation>Найти, выровнять и обрезать страницу</translation>
    </message>
    <message>
        <source>Crop and straighten all pages, cards and receipts side by side: one file each</source>
        <translation>Обрезать и выровнять все страницы, карточки и чеки, лежащие рядом: каждый в отдельный файл</translation>
    </message>
    <message>
        <source>Cut out the area drawn in the picture</source>
        <translation>Вырезать выделенную на изображении область</translation>
    </message>
    <message>
        <source>Second camera</source>
        <translation>Вторая камера</translation>
    </message>
    <message>
        <source>Show the second camera in the picture</source>
        <translation>Показать вторую камеру поверх изображения</translation>
    </message>
    <message>
        <source>Fit to window</source>
        <translation>По размеру окна</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Во весь экран</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>Увеличить</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>Уменьшить</translation>
    </message>
    <message>
        <source>Rotate left</source>
        <translation>Повернуть влево</translation>
    </message>
    <message>
        <source>Rotate right</source>
        <translation>Повернуть вправо</translation>
    </message>
    <message>
        <source>Freeze the picture</source>
        <translation>Остановить изображение</translation>
    </message>
    <message>
        <source>More tools</source>
        <translation>Другие инструменты</translation>
    </message>
</context>
<context>
    <name>TuningControl</name>
    <message>
        <source>There is nothing to focus on at this place.</source>
        <translation>В этом месте не на чем сфокусироваться.</translation>
    </message>
</context>
<context>
    <name>VideoRecord</name>
    <message>
        <source>Stop</source>
        <translation>Стоп</translation>
    </message>
    <message>
        <source>Recording video:</source>
        <translation>Запись видео:</translation>
    </message>
    <message>
        <source>Video Record</source>
        <translation>Запись видео</translation>
    </message>
    <message>
        <source>Tip</source>
        <translation>Подсказка</translation>
    </message>
    <message>
        <source>Record finished</source>
        <translation>Запись завершена</translation>
    </message>
    <message>
        <source>Do you want to open the video directory?</source>
        <translation>Открыть папку с видео?</translation>
    </message>
    <message>
        <source>Open Directory</source>
        <translation>Открыть папку</translation>
    </message>
    <message>
        <source>Finish</source>
        <translation>Готово</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>Recorded:</source>
        <translation>Записано:</translation>
    </message>
</context>
<context>
    <name>VideoView</name>
    <message>
        <source>Please waiting...</source>
        <translation>Подождите…</translation>
    </message>
</context>
<context>
    <name>WaitingSign</name>
    <message>
        <source>Waiting for a picture of the camera. Press Esc to give it up.</source>
        <translation>Ожидание изображения от камеры. Esc — отменить.</translation>
    </message>
</context>
</TS>
