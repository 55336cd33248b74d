<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="ru">
<context>
    <name>Field</name>
    <message>
        <source>Can&apos;t convert from %1 to %2</source>
        <translation>Can&apos;t convert from %1 to %2</translation>
    </message>
    <message>
        <source>Can&apos;t convert from &apos;%1&apos;&apos; to %2</source>
        <translation>Can&apos;t convert from &apos;%1&apos;&apos; to %2</translation>
    </message>
</context>
<context>
    <name>MasterIndex</name>
    <message>
        <source>Колонок в порядке строк: %1, ожидалось: %2</source>
        <translation>Columns in the order of rows: %1, expected: %2</translation>
    </message>
    <message>
        <source>Колонка %1 другого типа: %2</source>
        <translation>Column %1 is of another type: %2</translation>
    </message>
</context>
<context>
    <name>Record</name>
    <message>
        <source>Строки нет</source>
        <translation>There is no row</translation>
    </message>
    <message>
        <source>В строке нет колонки %1</source>
        <translation>The row has no column %1</translation>
    </message>
</context>
<context>
    <name>ReferenceData</name>
    <message>
        <source>нет списка &quot;%1&quot;</source>
        <translation>the list &quot;%1&quot; is missing</translation>
    </message>
    <message>
        <source>повторное значение</source>
        <translation>duplicate value</translation>
    </message>
    <message>
        <source>неизвестное значение</source>
        <translation>unknown value</translation>
    </message>
    <message>
        <source>неверное значение</source>
        <translation>invalid value</translation>
    </message>
    <message>
        <source>список &quot;%1&quot;, запись %2: %3 &quot;%4&quot;</source>
        <translation>list &quot;%1&quot;, entry %2: %3 &quot;%4&quot;</translation>
    </message>
    <message>
        <source>байт %1: %2</source>
        <translation>byte %1: %2</translation>
    </message>
    <message>
        <source>Невозможно открыть файл %1</source>
        <translation>Cannot open file %1</translation>
    </message>
    <message>
        <source>Ошибка в справочнике %1: %2</source>
        <translation>Error in reference data %1: %2</translation>
    </message>
    <message>
        <source>demonstration.json</source>
        <comment>file of the same securities, named in the language</comment>
        <translation>demonstration_en.json</translation>
    </message>
    <message>
        <source>Невозможно прочитать файл %1</source>
        <translation>Cannot read file %1</translation>
    </message>
</context>
<context>
    <name>SelectorBox</name>
    <message>
        <source>не выбрано</source>
        <translation>not selected</translation>
    </message>
</context>
<context>
    <name>Table</name>
    <message>
        <source>Строка не принадлежит таблице %1</source>
        <translation>The row does not belong to table %1</translation>
    </message>
    <message>
        <source>В таблице %1 нет колонки %2</source>
        <translation>Table %1 has no column %2</translation>
    </message>
</context>
<context>
    <name>decimal</name>
    <message>
        <source>Некорректное число &apos;%1&apos;</source>
        <translation>Invalid number &apos;%1&apos;</translation>
    </message>
</context>
<context>
    <name>vexdesk::AxisTicks</name>
    <message>
        <source>%1 д</source>
        <translation>%1 d</translation>
    </message>
    <message>
        <source>%1 ч</source>
        <translation>%1 h</translation>
    </message>
    <message>
        <source>%1 мин</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>%1 с</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 нед</source>
        <translation>%1 wk</translation>
    </message>
    <message>
        <source>%1 мес</source>
        <translation>%1 mo</translation>
    </message>
</context>
<context>
    <name>vexdesk::BarsCopier</name>
    <message>
        <source>Копирование баров отменено</source>
        <translation>Copying of bars given up</translation>
    </message>
    <message>
        <source>Копирование баров: день %1 из %2 (Esc — отменить)</source>
        <translation>Copying bars: day %1 of %2 (Esc gives up)</translation>
    </message>
    <message>
        <source>Бары не скопированы: их больше %1. Отметьте меньший отрезок или выберите больший таймфрейм.</source>
        <translation>The bars were not copied: there are more than %1. Mark a shorter range or choose a longer timeframe.</translation>
    </message>
    <message>
        <source>Копировать нечего: в этом отрезке нет баров</source>
        <translation>Nothing to copy: there are no bars in this range</translation>
    </message>
    <message>
        <source>Копирование баров</source>
        <translation>Copying of bars</translation>
    </message>
    <message>
        <source>Скопировать</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>Скопировано баров: %1, таймфрейм: %2</source>
        <translation>Bars copied: %1, timeframe: %2</translation>
    </message>
    <message>
        <source>; не скопировано дней: %1</source>
        <translation>; days not copied: %1</translation>
    </message>
    <message>
        <source>Бары прочитаны не за все дни. Не удалось прочитать дней: %1, первый из них — %2.

%3

Скопировать остальные?</source>
        <translation>Bars were not read of all days. Days that could not be read: %1, the first of them is %2.

%3

Copy the others?</translation>
    </message>
</context>
<context>
    <name>vexdesk::BarsCopy</name>
    <message>
        <source>файла больше нет, или он пуст</source>
        <translation>the file is gone, or empty</translation>
    </message>
    <message>
        <source>в файле баров больше %1</source>
        <translation>the file has more than %1 bars</translation>
    </message>
</context>
<context>
    <name>vexdesk::ChartCommands</name>
    <message>
        <source>График</source>
        <translation>Chart</translation>
    </message>
    <message>
        <source>&amp;Перейти к дате...</source>
        <translation>&amp;Go to date...</translation>
    </message>
    <message>
        <source>&amp;Назад</source>
        <translation>&amp;Back</translation>
    </message>
    <message>
        <source>&amp;Вперёд</source>
        <translation>&amp;Forward</translation>
    </message>
    <message>
        <source>С&amp;двинуть</source>
        <translation>Scro&amp;ll</translation>
    </message>
    <message>
        <source>К &amp;первому бару</source>
        <translation>To the &amp;first bar</translation>
    </message>
    <message>
        <source>К п&amp;оследнему бару</source>
        <translation>To the &amp;last bar</translation>
    </message>
    <message>
        <source>На &amp;экран назад</source>
        <translation>Page &amp;back</translation>
    </message>
    <message>
        <source>На экран &amp;вперёд</source>
        <translation>Page f&amp;orward</translation>
    </message>
    <message>
        <source>Немного н&amp;азад</source>
        <translation>A little b&amp;ack</translation>
    </message>
    <message>
        <source>Немно&amp;го вперёд</source>
        <translation>A li&amp;ttle forward</translation>
    </message>
    <message>
        <source>П&amp;ерекрестие и отметка</source>
        <translation>C&amp;rosshair and mark</translation>
    </message>
    <message>
        <source>На свечу &amp;назад</source>
        <translation>Candle &amp;back</translation>
    </message>
    <message>
        <source>На свечу &amp;вперёд</source>
        <translation>Candle &amp;forward</translation>
    </message>
    <message>
        <source>&amp;Отметить назад</source>
        <translation>&amp;Mark backwards</translation>
    </message>
    <message>
        <source>О&amp;тметить вперёд</source>
        <translation>Mar&amp;k forwards</translation>
    </message>
    <message>
        <source>&amp;Убрать</source>
        <translation>&amp;Remove</translation>
    </message>
    <message>
        <source>&amp;Таймфрейм</source>
        <translation>&amp;Timeframe</translation>
    </message>
    <message>
        <source>&amp;Индикаторы</source>
        <translation>&amp;Indicators</translation>
    </message>
    <message>
        <source>Но&amp;чи и выходные</source>
        <translation>&amp;Nights and weekends</translation>
    </message>
    <message>
        <source>При&amp;близить</source>
        <translation>&amp;Zoom in</translation>
    </message>
    <message>
        <source>&amp;Отдалить</source>
        <translation>Zoom &amp;out</translation>
    </message>
    <message>
        <source>Приблизить от&amp;меченное</source>
        <translation>Zoom to &amp;mark</translation>
    </message>
    <message>
        <source>Показать вс&amp;ё</source>
        <translation>Show &amp;all</translation>
    </message>
    <message>
        <source>&amp;Копировать бары</source>
        <translation>&amp;Copy bars</translation>
    </message>
    <message>
        <source>Копировать картинк&amp;у</source>
        <translation>Copy &amp;picture</translation>
    </message>
    <message>
        <source>Сохр&amp;анить картинку...</source>
        <translation>Sa&amp;ve picture...</translation>
    </message>
    <message>
        <source>С&amp;ледующий график</source>
        <translation>N&amp;ext chart</translation>
    </message>
    <message>
        <source>Предыду&amp;щий график</source>
        <translation>Previo&amp;us chart</translation>
    </message>
    <message>
        <source>&amp;Закрыть график</source>
        <translation>Close c&amp;hart</translation>
    </message>
    <message>
        <source>Сохранить картинку</source>
        <translation>Save picture</translation>
    </message>
    <message>
        <source>Рисунок SVG (*.svg)</source>
        <translation>SVG drawing (*.svg)</translation>
    </message>
    <message>
        <source>Картинка PNG (*.png)</source>
        <translation>PNG picture (*.png)</translation>
    </message>
    <message>
        <source>Закр&amp;ыть остальные графики</source>
        <translation>&amp;Keep only this chart</translation>
    </message>
    <message>
        <source>&amp;Копировать бары (%1)</source>
        <translation>&amp;Copy bars (%1)</translation>
    </message>
    <message>
        <source>За %1 показать нечего: показан %2</source>
        <translation>Nothing to show of %1: %2 is shown</translation>
    </message>
</context>
<context>
    <name>vexdesk::ChartFiles</name>
    <message>
        <source>Дата</source>
        <translation>Date</translation>
    </message>
    <message>
        <source>Время</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>Откр.</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>Макс.</source>
        <translation>High</translation>
    </message>
    <message>
        <source>Мин.</source>
        <translation>Low</translation>
    </message>
    <message>
        <source>Закр.</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Объём</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>Объём в деньгах</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>Откр. интерес</source>
        <translation>Open interest</translation>
    </message>
    <message>
        <source>График сохраняется в файлах с расширением .png или .svg: &quot;%1&quot;</source>
        <translation>A chart is saved in files with the suffix .png or .svg: &quot;%1&quot;</translation>
    </message>
    <message>
        <source>Не удалось записать файл &quot;%1&quot;: %2</source>
        <translation>Could not write the file &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>Не удалось нарисовать картинку &quot;%1&quot;</source>
        <translation>Cannot draw the picture &quot;%1&quot;</translation>
    </message>
</context>
<context>
    <name>vexdesk::ChartLayout</name>
    <message>
        <source>нет объёма</source>
        <translation>no volume</translation>
    </message>
</context>
<context>
    <name>vexdesk::ChartPage</name>
    <message>
        <source>Таймфрейм</source>
        <translation>Timeframe</translation>
    </message>
    <message>
        <source>Таймфрейм свечей</source>
        <translation>Timeframe of the candles</translation>
    </message>
    <message>
        <source>Ночи</source>
        <translation>Nights</translation>
    </message>
    <message>
        <source>Показать ночи, выходные и праздники: время идёт равномерно</source>
        <translation>Show nights, weekends and holidays: time runs evenly</translation>
    </message>
    <message>
        <source>Показать всё</source>
        <translation>Show all</translation>
    </message>
    <message>
        <source>Показать все бары серии (Ctrl+0 или двойной щелчок по графику)</source>
        <translation>Show all bars of the series (Ctrl+0, or a double click on the chart)</translation>
    </message>
    <message>
        <source>Индикаторы</source>
        <translation>Indicators</translation>
    </message>
    <message>
        <source>Что рассчитать по свечам и нарисовать вместе с ними</source>
        <translation>What to compute from the candles and draw with them</translation>
    </message>
    <message>
        <source>Этой серии больше нет в хранилище.</source>
        <translation>This series is no longer stored.</translation>
    </message>
    <message>
        <source>показаны свечи: %1</source>
        <translation>candles shown: %1</translation>
    </message>
    <message>
        <source>Для выбранного таймфрейма не хватает места: приблизьте график</source>
        <translation>There is no room for the chosen timeframe: zoom in</translation>
    </message>
    <message>
        <source>В этой серии нет баров, которые можно показать.</source>
        <translation>This series has no bars that can be shown.</translation>
    </message>
    <message>
        <source>Чтение баров: день %1 из %2</source>
        <translation>Reading bars: day %1 of %2</translation>
    </message>
    <message>
        <source>Картинка скопирована в буфер обмена</source>
        <translation>The picture is in the clipboard</translation>
    </message>
    <message>
        <source>Картинка %1 сохранена в каталоге %2</source>
        <translation>Picture %1 saved in the folder %2</translation>
    </message>
    <message>
        <source>Прочитать снова</source>
        <translation>Read again</translation>
    </message>
    <message>
        <source>Прочитать снова то, что не удалось прочитать (F5)</source>
        <translation>Read again what could not be read (F5)</translation>
    </message>
    <message>
        <source>1 день не прочитан: %1: %2</source>
        <translation>1 day was not read: %1: %2</translation>
    </message>
    <message>
        <source>Не прочитано дней: %1. Первый из них: %2: %3</source>
        <translation>Days that were not read: %1. The first of them: %2: %3</translation>
    </message>
    <message>
        <source>Строк, которые не бары и не показаны: %1, файл: %2</source>
        <translation>Lines that are no bars and are not shown: %1, file: %2</translation>
    </message>
    <message>
        <source>Строк, которые не бары и не показаны: %1, дней с ними: %2. Первый из них: %3</source>
        <translation>Lines that are no bars and are not shown: %1, days with them: %2. The first of them: %3</translation>
    </message>
</context>
<context>
    <name>vexdesk::ChartTabs</name>
    <message>
        <source>%1 — %2 — %3</source>
        <translation>%1 — %2 — %3</translation>
    </message>
    <message>
        <source>&amp;Закрыть</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>Закрыть &amp;остальные</source>
        <translation>Close &amp;others</translation>
    </message>
</context>
<context>
    <name>vexdesk::ChartView</name>
    <message>
        <source>График цен и объёмов</source>
        <translation>Chart of prices and volumes</translation>
    </message>
    <message>
        <source>График цен и объёмов: %1</source>
        <translation>Chart of prices and volumes: %1</translation>
    </message>
</context>
<context>
    <name>vexdesk::Charts</name>
    <message>
        <source>График не показан: в хранилище нет серии %1</source>
        <translation>No chart is shown: series %1 is not in the store</translation>
    </message>
    <message>
        <source>В хранилище нет дня %1 серии %2: показано ближайшее место</source>
        <translation>Day %1 of series %2 is not in the store: the nearest place is shown</translation>
    </message>
</context>
<context>
    <name>vexdesk::CommandLine</name>
    <message>
        <source>Искать модули в этом каталоге, а не в обычных. Можно указать несколько раз.</source>
        <translation>Look for plug-ins in this directory instead of the usual ones. Can be given several times.</translation>
    </message>
    <message>
        <source>каталог</source>
        <translation>directory</translation>
    </message>
    <message>
        <source>Взять площадки, режимы торгов и инструменты из этого файла.</source>
        <translation>Take venues, boards and securities from this file.</translation>
    </message>
    <message>
        <source>файл</source>
        <translation>file</translation>
    </message>
    <message>
        <source>Показать эту справку и выйти.</source>
        <translation>Show this help and exit.</translation>
    </message>
    <message>
        <source>Показать версию и выйти.</source>
        <translation>Show the version and exit.</translation>
    </message>
    <message>
        <source>Язык терминала: ru или en. Без этого параметра — выбранный в меню, а если не выбран, то язык пользователя.</source>
        <translation>Language of the terminal: ru or en. Without this option, the one chosen in the menu or, if none was, the language of the user.</translation>
    </message>
    <message>
        <source>язык</source>
        <translation>language</translation>
    </message>
    <message>
        <source>Неизвестный язык «%1»: бывает ru или en.</source>
        <translation>Unknown language &quot;%1&quot;: use ru or en.</translation>
    </message>
</context>
<context>
    <name>vexdesk::DataDirectory</name>
    <message>
        <source>Терминал уже запущен</source>
        <translation>The terminal is already running</translation>
    </message>
    <message>
        <source>С этим каталогом данных уже работает терминал (процесс %1):
%2

Если менять историю или настройки в обоих, изменения одного из них пропадут.</source>
        <translation>A terminal already works with this data directory (process %1):
%2

If both change history or settings, the changes of one of them will be lost.</translation>
    </message>
    <message>
        <source>&amp;Завершить</source>
        <translation>&amp;End</translation>
    </message>
    <message>
        <source>&amp;Продолжить</source>
        <translation>&amp;Go on</translation>
    </message>
    <message>
        <source>В каталог данных %1 нельзя писать: импорт, правка истории и настройки не сохранятся.</source>
        <translation>The data directory %1 cannot be written: imports, edits of the history and settings will not be kept.</translation>
    </message>
    <message>
        <source>На диске каталога данных %1 нет места: импорт, правка истории и настройки не сохранятся.</source>
        <translation>There is no room on the disk of the data directory %1: imports, edits of the history and settings will not be kept.</translation>
    </message>
</context>
<context>
    <name>vexdesk::Database</name>
    <message>
        <source>Таблица %1 уже есть</source>
        <translation>Table %1 already exists</translation>
    </message>
</context>
<context>
    <name>vexdesk::DayFileLines</name>
    <message>
        <source>строка длиннее 256 МБ</source>
        <translation>a line is longer than 256 MB</translation>
    </message>
    <message>
        <source>файл больше 1 ГБ</source>
        <translation>the file is larger than 1 GB</translation>
    </message>
    <message>
        <source>файл стал короче, пока его читали</source>
        <translation>the file became shorter while it was read</translation>
    </message>
</context>
<context>
    <name>vexdesk::DayFileNames</name>
    <message>
        <source>Невозможно узнать, что за файл %1: %2</source>
        <translation>Cannot tell what file %1 is: %2</translation>
    </message>
</context>
<context>
    <name>vexdesk::DayFileRewrite</name>
    <message>
        <source>Файл %1 не переписан: %2; %3.</source>
        <translation>The file %1 was not rewritten: %2; %3.</translation>
    </message>
    <message>
        <source>покажите интервал ещё раз и повторите удаление</source>
        <translation>show the range again and repeat the deletion</translation>
    </message>
    <message>
        <source>он изменился после того, как был показан</source>
        <translation>it has changed since it was shown</translation>
    </message>
    <message>
        <source>проверьте диск и права на файл и повторите удаление</source>
        <translation>check the disk and the permissions of the file and repeat the deletion</translation>
    </message>
    <message>
        <source>Файл %1 испорчен: он был переписан не до конца, и вернуть прежнее содержимое не удалось (%2); импортируйте этот день заново.</source>
        <translation>The file %1 is broken: it was rewritten only in part, and its old content could not be put back (%2); import this day anew.</translation>
    </message>
    <message>
        <source>Файл %1 пуст, но не удалён: %2; удалите его.</source>
        <translation>The file %1 is empty, but was not removed: %2; remove it.</translation>
    </message>
    <message>
        <source>это не обычный файл</source>
        <translation>it is no regular file</translation>
    </message>
    <message>
        <source>уберите его из хранилища</source>
        <translation>take it out of the store</translation>
    </message>
    <message>
        <source>его больше нет</source>
        <translation>it is no longer there</translation>
    </message>
    <message>
        <source>он изменился, пока его читали</source>
        <translation>it has changed while it was being read</translation>
    </message>
    <message>
        <source>повторите импорт</source>
        <translation>repeat the import</translation>
    </message>
    <message>
        <source>проверьте диск и права на файл и повторите импорт</source>
        <translation>check the disk and the permissions of the file and repeat the import</translation>
    </message>
</context>
<context>
    <name>vexdesk::DayFileWriter</name>
    <message>
        <source>это не обычный файл</source>
        <translation>it is no regular file</translation>
    </message>
</context>
<context>
    <name>vexdesk::DayReader</name>
    <message>
        <source>ссылка никуда не ведёт</source>
        <translation>the link leads nowhere</translation>
    </message>
    <message>
        <source>это каталог, а не файл</source>
        <translation>this is a directory and no file</translation>
    </message>
    <message>
        <source>это не файл</source>
        <translation>this is no file</translation>
    </message>
    <message>
        <source>файл изменился, пока его открывали</source>
        <translation>the file changed while it was opened</translation>
    </message>
    <message>
        <source>в файле нет ни одного бара</source>
        <translation>there is no bar in the file</translation>
    </message>
</context>
<context>
    <name>vexdesk::Directories</name>
    <message>
        <source>Невозможно прочитать каталог %1: %2</source>
        <translation>Cannot read the directory %1: %2</translation>
    </message>
</context>
<context>
    <name>vexdesk::DirectoryNames</name>
    <message>
        <source>Не удалось прочитать каталог &quot;%1&quot;: %2</source>
        <translation>The directory &quot;%1&quot; could not be read: %2</translation>
    </message>
</context>
<context>
    <name>vexdesk::ErrorReport</name>
    <message>
        <source>Ошибка</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Произошла неизвестная ошибка.</source>
        <translation>An unknown error has occurred.</translation>
    </message>
</context>
<context>
    <name>vexdesk::GoToDialog</name>
    <message>
        <source>&amp;Время:</source>
        <translation>&amp;Time:</translation>
    </message>
    <message>
        <source>Перейти к дате</source>
        <translation>Go to date</translation>
    </message>
    <message>
        <source>Время</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>Хранятся дни с %1 по %2</source>
        <translation>Stored days: %1 to %2</translation>
    </message>
    <message>
        <source>Перейти</source>
        <translation>Go</translation>
    </message>
    <message>
        <source>&amp;Дата:</source>
        <translation>&amp;Date:</translation>
    </message>
    <message>
        <source>День, день и месяц или дата целиком: 29, 29.02, 29.02.2024; стрелки вверх и вниз — соседние дни</source>
        <translation>A day, a day and a month, or a whole date, in the order in which it is shown; the arrow keys up and down go to the days beside it</translation>
    </message>
    <message>
        <source>Календарь</source>
        <translation>Calendar</translation>
    </message>
    <message>
        <source>Это не дата. Нужна, например, %1</source>
        <translation>This is no date. One is, for example, %1</translation>
    </message>
    <message>
        <source>%1. Хранятся дни с %2 по %3</source>
        <translation>%1. Stored days: %2 to %3</translation>
    </message>
    <message>
        <source>За %1 показать нечего: будет показан %2</source>
        <translation>Nothing to show of %1: %2 will be shown</translation>
    </message>
</context>
<context>
    <name>vexdesk::GuideWindow</name>
    <message>
        <source>Руководство</source>
        <translation>User guide</translation>
    </message>
</context>
<context>
    <name>vexdesk::LanguageChoice</name>
    <message>
        <source>Язык</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>Перезапустить</source>
        <translation>Restart</translation>
    </message>
    <message>
        <source>Позже</source>
        <translation>Later</translation>
    </message>
    <message>
        <source>Язык изменится после перезапуска терминала.</source>
        <translation>The language will change after the terminal is restarted.</translation>
    </message>
    <message>
        <source>Выбор языка не записан: каталог %1 или файл vexdesk.ini в нём не принимает запись. На один запуск язык задаёт параметр --language.</source>
        <translation>The choice of the language was not written: the directory %1 or the file vexdesk.ini in it takes no writing. For one run the option --language sets the language.</translation>
    </message>
</context>
<context>
    <name>vexdesk::Links</name>
    <message>
        <source>Ссылка %1 никуда не ведёт: подключите диск, на который она указывает, или удалите её</source>
        <translation>The link %1 leads nowhere: connect the disk that it points to, or delete it</translation>
    </message>
    <message>
        <source>Ссылка %1 не читается: %2</source>
        <translation>Cannot read the link %1: %2</translation>
    </message>
</context>
<context>
    <name>vexdesk::Main</name>
    <message>
        <source>Терминал не удалось запустить снова: сделайте это сами.</source>
        <translation>The terminal could not be started again: please do so yourself.</translation>
    </message>
    <message>
        <source>Торговый терминал Vexdesk.</source>
        <translation>The trading terminal Vexdesk.</translation>
    </message>
    <message>
        <source>Загрузить модули, назвать загруженные и отклонённые и выйти. Код выхода 1, если хотя бы один отклонён.</source>
        <translation>Load the plug-ins, name those that were loaded and refused, and exit. The exit code is 1 if any was refused.</translation>
    </message>
    <message>
        <source>Заполнить сегодняшние сделки всех инструментов придуманными. Пока терминал работает, они попадают и в экспорт за сегодня.</source>
        <translation>Fill today&apos;s deals of all securities with made-up ones. While the terminal runs, an export of today takes them too.</translation>
    </message>
</context>
<context>
    <name>vexdesk::MainWindow</name>
    <message>
        <source>Сообщить модулям о начале нового торгового дня, не дожидаясь смены даты: для проверки модулей</source>
        <translation>Tell the plug-ins that a new trading day has begun without waiting for the date to change: for testing plug-ins</translation>
    </message>
    <message>
        <source>&amp;Файл</source>
        <translation>&amp;File</translation>
    </message>
    <message>
        <source>&amp;Сервис</source>
        <translation>&amp;Tools</translation>
    </message>
    <message>
        <source>&amp;Для разработчиков</source>
        <translation>&amp;For developers</translation>
    </message>
    <message>
        <source>&amp;Выход</source>
        <translation>E&amp;xit</translation>
    </message>
    <message>
        <source>&amp;Настройки...</source>
        <translation>&amp;Options...</translation>
    </message>
    <message>
        <source>&amp;Модули...</source>
        <translation>&amp;Plug-ins...</translation>
    </message>
    <message>
        <source>&amp;Новый торговый день</source>
        <translation>&amp;New trading day</translation>
    </message>
    <message>
        <source>&amp;О программе</source>
        <translation>&amp;About</translation>
    </message>
    <message>
        <source>Терминал</source>
        <translation>Terminal</translation>
    </message>
    <message>
        <source>Показать, какие модули отклонены и почему</source>
        <translation>Show which plug-ins were refused and why</translation>
    </message>
    <message>
        <source>Загружено модулей: %1</source>
        <translation>Plug-ins loaded: %1</translation>
    </message>
    <message>
        <source>Отклонено модулей: %1. Подробнее...</source>
        <translation>Plug-ins refused: %1. Details...</translation>
    </message>
    <message>
        <source>Модулям сообщено о новом торговом дне</source>
        <translation>The plug-ins were told of a new trading day</translation>
    </message>
    <message>
        <source>О программе</source>
        <translation>About</translation>
    </message>
    <message>
        <source>&lt;h3&gt;Vexdesk %1&lt;/h3&gt;&lt;p&gt;Торговый терминал, который расширяется модулями.&lt;/p&gt;&lt;p&gt;Версия Qt: %2&lt;/p&gt;</source>
        <translation>&lt;h3&gt;Vexdesk %1&lt;/h3&gt;&lt;p&gt;A trading terminal that is extended by plug-ins.&lt;/p&gt;&lt;p&gt;Qt version: %2&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&amp;Язык</source>
        <translation>&amp;Language</translation>
    </message>
    <message>
        <source>&amp;Вид</source>
        <translation>&amp;View</translation>
    </message>
    <message>
        <source>С&amp;правка</source>
        <translation>&amp;Help</translation>
    </message>
    <message>
        <source>Заполнить сегодняшние сделки всех инструментов придуманными; пока они включены, они попадают и в экспорт за сегодня</source>
        <translation>Fill today&apos;s deals of all securities with made-up ones; while they are on, an export of today takes them too</translation>
    </message>
    <message>
        <source>&amp;Придуманные сделки</source>
        <translation>&amp;Made-up deals</translation>
    </message>
    <message>
        <source>Идут придуманные сделки</source>
        <translation>Made-up deals are on</translation>
    </message>
    <message>
        <source>Сегодняшние сделки всех инструментов придуманы, и экспорт за сегодня берёт их. Выключаются они в меню «Сервис», «Для разработчиков».</source>
        <translation>Today&apos;s deals of all securities are made up, and an export of today takes them. They are switched off in the menu &quot;Tools&quot;, &quot;For developers&quot;.</translation>
    </message>
    <message>
        <source>&amp;Руководство</source>
        <translation>User &amp;guide</translation>
    </message>
    <message>
        <source>Руководства нет ни в одном из каталогов:
%1</source>
        <translation>None of these directories has the user guide:
%1</translation>
    </message>
    <message>
        <source>&amp;Серии</source>
        <translation>&amp;Series</translation>
    </message>
    <message>
        <source>Серии</source>
        <translation>Series</translation>
    </message>
    <message>
        <source>Найти се&amp;рию</source>
        <translation>Fin&amp;d series</translation>
    </message>
</context>
<context>
    <name>vexdesk::MovingAverage</name>
    <message>
        <source>Скользящее среднее (%1)</source>
        <translation>Moving average (%1)</translation>
    </message>
</context>
<context>
    <name>vexdesk::OptionsDialog</name>
    <message>
        <source>Настройки</source>
        <translation>Options</translation>
    </message>
    <message>
        <source>Поиск</source>
        <translation>Search</translation>
    </message>
    <message>
        <source>Ничего не найдено</source>
        <translation>Nothing found</translation>
    </message>
    <message>
        <source>Ни один модуль не добавил своих настроек</source>
        <translation>No plug-in has added options of its own</translation>
    </message>
    <message>
        <source>ОК</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Отмена</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Применить</source>
        <translation>Apply</translation>
    </message>
    <message>
        <source>Прочее</source>
        <translation>Other</translation>
    </message>
    <message>
        <source>Без названия</source>
        <translation>Untitled</translation>
    </message>
    <message>
        <source>Настройки не записаны: каталог %1 или файл vexdesk.ini в нём не принимает запись. Они действуют, пока терминал работает; при следующем запуске будут прежние.</source>
        <translation>The settings were not written: the directory %1 or the file vexdesk.ini in it takes no writing. They hold as long as the terminal runs; at the next start they will be the old ones.</translation>
    </message>
</context>
<context>
    <name>vexdesk::OptionsPageView</name>
    <message>
        <source>Страницу «%1» не удалось открыть: %2</source>
        <translation>The page &quot;%1&quot; could not be opened: %2</translation>
    </message>
    <message>
        <source>Страницу «%1» не удалось открыть: модуль её не создал.</source>
        <translation>The page &quot;%1&quot; could not be opened: the plug-in did not create it.</translation>
    </message>
    <message>
        <source>Настройки страницы «%1» не сохранены: %2</source>
        <translation>The options of the page &quot;%1&quot; were not saved: %2</translation>
    </message>
    <message>
        <source>Ошибка страницы «%1» при закрытии настроек: %2</source>
        <translation>Error in the page &quot;%1&quot; while closing the options: %2</translation>
    </message>
</context>
<context>
    <name>vexdesk::PluginLoader</name>
    <message>
        <source>Это модуль другой программы: его интерфейс &quot;%1&quot;, а нужен &quot;%2*&quot;.</source>
        <translation>This is a plug-in of another program: its interface is &quot;%1&quot;, but &quot;%2*&quot; is needed.</translation>
    </message>
    <message>
        <source>Модуль собран для Qt %1.%2, а терминал работает с Qt %3.</source>
        <translation>The plug-in was built for Qt %1.%2, but the terminal runs with Qt %3.</translation>
    </message>
    <message>
        <source>Файл пуст.</source>
        <translation>The file is empty.</translation>
    </message>
    <message>
        <source>Объект модуля не создан: %1</source>
        <translation>The object of the plug-in was not created: %1</translation>
    </message>
    <message>
        <source>Объект модуля не поддерживает интерфейс терминала (%1).</source>
        <translation>The object of the plug-in does not support the interface of the terminal (%1).</translation>
    </message>
    <message>
        <source>Модуль не сообщает сведения о себе: %1</source>
        <translation>The plug-in does not tell about itself: %1</translation>
    </message>
    <message>
        <source>Модуль с кодом &quot;%1&quot; уже загружен.</source>
        <translation>A plug-in with the code &quot;%1&quot; is already loaded.</translation>
    </message>
    <message>
        <source>Ошибка при запуске модуля: %1</source>
        <translation>Error while starting the plug-in: %1</translation>
    </message>
    <message>
        <source>Ошибка модуля %1 при запуске терминала: %2</source>
        <translation>Error in plug-in %1 while starting the terminal: %2</translation>
    </message>
    <message>
        <source>Ошибка модуля %1 при завершении работы: %2</source>
        <translation>Error in plug-in %1 while exiting: %2</translation>
    </message>
    <message>
        <source>В каталог %1 может писать кто угодно. Запретите это, например командой chmod o-w, и запустите терминал снова.</source>
        <translation>Anybody may write to the directory %1. Forbid that, for example by chmod o-w, and start the terminal again.</translation>
    </message>
    <message>
        <source>Каталог %1 принадлежит другому пользователю. Загружаются модули из каталогов администратора и своих: перенесите модуль в такой каталог.</source>
        <translation>The directory %1 belongs to another user. Plug-ins are loaded from directories of the administrator and from your own: move the plug-in to one of these.</translation>
    </message>
    <message>
        <source>Файл повреждён или не является модулем Qt.</source>
        <translation>The file is damaged or not a Qt plug-in.</translation>
    </message>
    <message>
        <source>Код модуля не загружается.</source>
        <translation>The plug-in&apos;s code cannot be loaded.</translation>
    </message>
</context>
<context>
    <name>vexdesk::PluginModel</name>
    <message>
        <source>Состояние</source>
        <translation>State</translation>
    </message>
    <message>
        <source>Код</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>Название</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Версия</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Автор</source>
        <translation>Author</translation>
    </message>
    <message>
        <source>Описание</source>
        <translation>Description</translation>
    </message>
    <message>
        <source>Файл</source>
        <translation>File</translation>
    </message>
    <message>
        <source>Причина отказа</source>
        <translation>Reason for refusal</translation>
    </message>
    <message>
        <source>Загружен</source>
        <translation>Loaded</translation>
    </message>
    <message>
        <source>Отклонён</source>
        <translation>Refused</translation>
    </message>
</context>
<context>
    <name>vexdesk::PluginsDialog</name>
    <message>
        <source>Модули</source>
        <translation>Plug-ins</translation>
    </message>
    <message>
        <source>&amp;Подробности:</source>
        <translation>&amp;Details:</translation>
    </message>
    <message>
        <source>&amp;Закрыть</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>Найдено файлов: %1, загружено модулей: %2, отклонено: %3</source>
        <translation>Files found: %1, plug-ins loaded: %2, refused: %3</translation>
    </message>
    <message>
        <source>В этих каталогах модулей нет:</source>
        <translation>There are no plug-ins in these directories:</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Файл</source>
        <translation>File</translation>
    </message>
    <message>
        <source>Состояние</source>
        <translation>State</translation>
    </message>
    <message>
        <source>Причина отказа</source>
        <translation>Reason for refusal</translation>
    </message>
    <message>
        <source>Код</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>Название</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Версия</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Автор</source>
        <translation>Author</translation>
    </message>
    <message>
        <source>Описание</source>
        <translation>Description</translation>
    </message>
    <message>
        <source>Подробности</source>
        <translation>Details</translation>
    </message>
</context>
<context>
    <name>vexdesk::ProblemNotice</name>
    <message>
        <source>Показать всё, что не удалось</source>
        <translation>Show everything that failed</translation>
    </message>
    <message>
        <source>Ошибки: %1. %2</source>
        <translation>Errors: %1. %2</translation>
    </message>
</context>
<context>
    <name>vexdesk::ProblemsDialog</name>
    <message>
        <source>Ошибки</source>
        <translation>Errors</translation>
    </message>
    <message>
        <source>&amp;Копировать всё</source>
        <translation>&amp;Copy all</translation>
    </message>
    <message>
        <source>&amp;Закрыть</source>
        <translation>&amp;Close</translation>
    </message>
</context>
<context>
    <name>vexdesk::Readout</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Откр. %1</source>
        <translation>Open %1</translation>
    </message>
    <message>
        <source>Макс. %1</source>
        <translation>High %1</translation>
    </message>
    <message>
        <source>Мин. %1</source>
        <translation>Low %1</translation>
    </message>
    <message>
        <source>Закр. %1</source>
        <translation>Close %1</translation>
    </message>
    <message>
        <source>Откр. интерес %1</source>
        <translation>Open interest %1</translation>
    </message>
    <message>
        <source>Объём %1</source>
        <translation>Volume %1</translation>
    </message>
    <message>
        <source>Объём в деньгах %1</source>
        <translation>Value %1</translation>
    </message>
</context>
<context>
    <name>vexdesk::RestorePlace</name>
    <message>
        <source>Невозможно создать ни каталог %1, ни каталог %2 для блокировок и точек возврата</source>
        <translation>Cannot make the directory %1 nor the directory %2 for locks and restore points</translation>
    </message>
    <message>
        <source>Невозможно прочитать каталог %1</source>
        <translation>Cannot read the directory %1</translation>
    </message>
</context>
<context>
    <name>vexdesk::RestorePoint</name>
    <message>
        <source>Точки возврата %1 в каталоге %2 нет</source>
        <translation>There is no restore point %1 in the directory %2</translation>
    </message>
    <message>
        <source>Сохранённый файл %1 не читается: %2</source>
        <translation>The kept file %1 cannot be read: %2</translation>
    </message>
    <message>
        <source>Сохранённый файл %1 уже не тот, что был сохранён</source>
        <translation>The kept file %1 is no longer what was kept</translation>
    </message>
    <message>
        <source>Точка возврата %1 занята: её задание ещё идёт или её удаляют</source>
        <translation>The restore point %1 is in use: its job still runs, or it is being removed</translation>
    </message>
    <message>
        <source>Точка возврата %1 испорчена: %2</source>
        <translation>The restore point %1 is broken: %2</translation>
    </message>
    <message>
        <source>point.json не читается</source>
        <translation>point.json cannot be read</translation>
    </message>
    <message>
        <source>point.json записан более новой версией</source>
        <translation>point.json was written by a newer version</translation>
    </message>
    <message>
        <source>в point.json не то, что должно быть</source>
        <translation>point.json does not hold what it should</translation>
    </message>
    <message>
        <source>journal не читается</source>
        <translation>journal cannot be read</translation>
    </message>
    <message>
        <source>Файл %1 не возвращён: %2</source>
        <translation>The file %1 was not put back: %2</translation>
    </message>
    <message>
        <source>Невозможно прочитать каталог %1</source>
        <translation>Cannot read the directory %1</translation>
    </message>
    <message>
        <source>на его месте не обычный файл</source>
        <translation>what has its place is no regular file</translation>
    </message>
    <message>
        <source>невозможно создать каталог %1</source>
        <translation>the directory %1 cannot be made</translation>
    </message>
    <message>
        <source>Файл %1 не удалён: это не обычный файл</source>
        <translation>The file %1 was not removed: it is no regular file</translation>
    </message>
    <message>
        <source>Файл %1 не удалён: %2</source>
        <translation>The file %1 was not removed: %2</translation>
    </message>
    <message>
        <source>Точка возврата %1 не удалена: %2</source>
        <translation>The restore point %1 was not removed: %2</translation>
    </message>
    <message>
        <source>Невозможно занять каталог %1: %2</source>
        <translation>Cannot lock the directory %1: %2</translation>
    </message>
    <message>
        <source>Файл %1 не тронут: его прежнее состояние не удалось сохранить в %2: %3</source>
        <translation>The file %1 was left alone: its state could not be kept in %2: %3</translation>
    </message>
    <message>
        <source>это не файл дня</source>
        <translation>it is no day file</translation>
    </message>
    <message>
        <source>Точка возврата %1 не дописана: %2; вернуть её можно</source>
        <translation>The restore point %1 is not complete: %2; it can be put back all the same</translation>
    </message>
    <message>
        <source>%1. Точка возврата %2 остаётся: когда причины не будет, вернуть всё можно по ней</source>
        <translation>%1. The restore point %2 stays: once the cause is gone, everything can be put back by it</translation>
    </message>
    <message>
        <source>Точка возврата %1 не читается: %2</source>
        <translation>Cannot read the restore point %1: %2</translation>
    </message>
    <message>
        <source>Файл %1 не читается: %2</source>
        <translation>Cannot read the file %1: %2</translation>
    </message>
    <message>
        <source>это не обычный файл</source>
        <translation>it is no regular file</translation>
    </message>
</context>
<context>
    <name>vexdesk::SeriesFiles</name>
    <message>
        <source>Невозможно создать каталог %1</source>
        <translation>Cannot make the directory %1</translation>
    </message>
    <message>
        <source>Файл %1 не удалён: %2</source>
        <translation>The file %1 was not removed: %2</translation>
    </message>
    <message>
        <source>Файл %1 не скопирован в %2: %3</source>
        <translation>The file %1 was not copied to %2: %3</translation>
    </message>
</context>
<context>
    <name>vexdesk::SeriesLocks</name>
    <message>
        <source>Невозможно создать файл блокировки %1</source>
        <translation>Cannot make the lock file %1</translation>
    </message>
    <message>
        <source>Серию %1 сейчас меняет другая программа; блокировка: %2</source>
        <translation>Another program is changing the series %1; the lock: %2</translation>
    </message>
    <message>
        <source>Серию %1 сейчас меняет %2 (процесс %3, компьютер %4); блокировка: %5</source>
        <translation>The series %1 is being changed by %2 (process %3, host %4); the lock: %5</translation>
    </message>
    <message>
        <source>Невозможно удалить файл блокировки %1: %2</source>
        <translation>Cannot remove the lock file %1: %2</translation>
    </message>
</context>
<context>
    <name>vexdesk::SeriesName</name>
    <message>
        <source>%1 — %2 — %3</source>
        <translation>%1 — %2 — %3</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>vexdesk::SeriesTree</name>
    <message>
        <source>Найти серию</source>
        <translation>Find a series</translation>
    </message>
    <message>
        <source>Часть кода или названия инструмента, режима торгов или площадки; Enter открывает график</source>
        <translation>A part of the code or name of a security, board or venue; Enter opens the chart</translation>
    </message>
    <message>
        <source>Серии</source>
        <translation>Series</translation>
    </message>
    <message>
        <source>Сохранённых баров пока нет.

Чтобы импортировать их из файла, выберите в меню терминала команду импорта загруженного модуля.</source>
        <translation>No bars are stored yet.

To import them from a file, choose the import command of a loaded plug-in in the terminal&apos;s menu.</translation>
    </message>
    <message>
        <source>Каталога &quot;%1&quot; нет.</source>
        <translation>There is no directory &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>Нет такой серии</source>
        <translation>There is no such series</translation>
    </message>
    <message>
        <source>Всего таких мест: %1</source>
        <translation>Such places in all: %1</translation>
    </message>
</context>
<context>
    <name>vexdesk::SeriesTreeModel</name>
    <message>
        <source>Серия</source>
        <translation>Series</translation>
    </message>
    <message>
        <source>Бары</source>
        <translation>Bars</translation>
    </message>
    <message>
        <source>Первый</source>
        <translation>First</translation>
    </message>
    <message>
        <source>Последний</source>
        <translation>Last</translation>
    </message>
    <message>
        <source>Название</source>
        <translation>Name</translation>
    </message>
</context>
<context>
    <name>vexdesk::StartPage</name>
    <message>
        <source>Данные и настройки: %1</source>
        <translation>Data and settings: %1</translation>
    </message>
    <message>
        <source>Торговый терминал</source>
        <translation>Trading terminal</translation>
    </message>
    <message>
        <source>Терминал ищет модули в каталогах:</source>
        <translation>The terminal looks for plug-ins in these directories:</translation>
    </message>
    <message>
        <source>• %1</source>
        <translation>• %1</translation>
    </message>
    <message>
        <source>• %1 (каталога нет)</source>
        <translation>• %1 (no such directory)</translation>
    </message>
    <message>
        <source>Положите файл модуля в один из них и запустите терминал снова.</source>
        <translation>Put the plug-in file into one of them and start the terminal again.</translation>
    </message>
    <message>
        <source>%1 › %2</source>
        <translation>%1 › %2</translation>
    </message>
    <message>
        <source>Недавние серии</source>
        <translation>Recent series</translation>
    </message>
    <message>
        <source>%1 — %2</source>
        <translation>%1 — %2</translation>
    </message>
    <message>
        <source>Ни один модуль не загружен, поэтому команд здесь пока нет.</source>
        <translation>No plug-in is loaded, so there are no commands here yet.</translation>
    </message>
</context>
<context>
    <name>vexdesk::Terminal</name>
    <message>
        <source>%1

Будут использованы демонстрационные данные.</source>
        <translation>%1

Demonstration data will be used.</translation>
    </message>
</context>
<context>
    <name>vexdesk::Tour</name>
    <message>
        <source>Шаг «%1»: %2</source>
        <translation>Step &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>Невозможно записать файл %1</source>
        <translation>Cannot write file %1</translation>
    </message>
    <message>
        <source> (картинка %1)</source>
        <translation> (picture %1)</translation>
    </message>
    <message>
        <source>график открыт</source>
        <translation>chart open</translation>
    </message>
    <message>
        <source>график не открылся</source>
        <translation>the chart did not open</translation>
    </message>
    <message>
        <source>таймфрейм графика</source>
        <translation>timeframe of the chart</translation>
    </message>
    <message>
        <source>бары на графике</source>
        <translation>bars on the chart</translation>
    </message>
    <message>
        <source>баров последнего дня нет</source>
        <translation>the bars of the last day are missing</translation>
    </message>
    <message>
        <source>показать всё</source>
        <translation>show all</translation>
    </message>
    <message>
        <source>приблизить колесом мыши</source>
        <translation>zoom in with the mouse wheel</translation>
    </message>
    <message>
        <source>баров первого дня нет</source>
        <translation>the bars of the first day are missing</translation>
    </message>
    <message>
        <source>навести на бар</source>
        <translation>point at a bar</translation>
    </message>
    <message>
        <source>на графике нет бара %1</source>
        <translation>the chart does not have the bar %1</translation>
    </message>
    <message>
        <source>вместо «%1» прочитано «%2»</source>
        <translation>read &quot;%2&quot; instead of &quot;%1&quot;</translation>
    </message>
    <message>
        <source>увести мышь с графика</source>
        <translation>move the mouse off the chart</translation>
    </message>
    <message>
        <source>бар ещё прочитан</source>
        <translation>a bar is still read out</translation>
    </message>
    <message>
        <source>удалённых баров нет на графике</source>
        <translation>the deleted bars are gone from the chart</translation>
    </message>
    <message>
        <source>график не виден</source>
        <translation>the chart is not visible</translation>
    </message>
    <message>
        <source>на графике удалённый бар %1</source>
        <translation>the chart has the deleted bar %1</translation>
    </message>
    <message>
        <source>график закрыт</source>
        <translation>chart closed</translation>
    </message>
    <message>
        <source>график не закрылся</source>
        <translation>the chart did not close</translation>
    </message>
    <message>
        <source>редактор не открыт</source>
        <translation>the editor is not open</translation>
    </message>
    <message>
        <source>в таблице строк: %1</source>
        <translation>rows in the table: %1</translation>
    </message>
    <message>
        <source>выбраны не те строки</source>
        <translation>the wrong rows are selected</translation>
    </message>
    <message>
        <source>время</source>
        <translation>time</translation>
    </message>
    <message>
        <source>кнопка редактора</source>
        <translation>button of the editor</translation>
    </message>
    <message>
        <source>кнопка недоступна</source>
        <translation>the button is disabled</translation>
    </message>
    <message>
        <source>бар найден</source>
        <translation>bar found</translation>
    </message>
    <message>
        <source>выделить бары</source>
        <translation>select bars</translation>
    </message>
    <message>
        <source>строка не текущая</source>
        <translation>the row is not the current one</translation>
    </message>
    <message>
        <source>файлы записаны</source>
        <translation>files written</translation>
    </message>
    <message>
        <source>окно не закрыто</source>
        <translation>the window is not closed</translation>
    </message>
    <message>
        <source>записано не то, что хранится</source>
        <translation>what was written is not what is stored</translation>
    </message>
    <message>
        <source>записаны не сегодняшние сделки</source>
        <translation>what was written is not today&apos;s deals</translation>
    </message>
    <message>
        <source>нет сообщения</source>
        <translation>there is no message</translation>
    </message>
    <message>
        <source>мастер экспорта</source>
        <translation>export wizard</translation>
    </message>
    <message>
        <source>дата</source>
        <translation>date</translation>
    </message>
    <message>
        <source>таймфрейм</source>
        <translation>timeframe</translation>
    </message>
    <message>
        <source>выходной файл</source>
        <translation>output file</translation>
    </message>
    <message>
        <source>файл записан</source>
        <translation>file written</translation>
    </message>
    <message>
        <source>нет файла %1</source>
        <translation>file %1 is missing</translation>
    </message>
    <message>
        <source>открыта не та страница</source>
        <translation>another page is open</translation>
    </message>
    <message>
        <source>продолжить</source>
        <translation>go on</translation>
    </message>
    <message>
        <source>экспорт завершён</source>
        <translation>export finished</translation>
    </message>
    <message>
        <source>файл уже есть</source>
        <translation>the file exists</translation>
    </message>
    <message>
        <source>в файле %1 не то, что ожидалось</source>
        <translation>file %1 does not hold what was expected</translation>
    </message>
    <message>
        <source>имя файла</source>
        <translation>file name</translation>
    </message>
    <message>
        <source>выбор файла</source>
        <translation>choice of the file</translation>
    </message>
    <message>
        <source>имя файла не введено</source>
        <translation>the file name is not entered</translation>
    </message>
    <message>
        <source>страница серии</source>
        <translation>series page</translation>
    </message>
    <message>
        <source>страница формата</source>
        <translation>format page</translation>
    </message>
    <message>
        <source>можно продолжать без разделителя</source>
        <translation>one can go on without a separator</translation>
    </message>
    <message>
        <source>разделитель</source>
        <translation>separator</translation>
    </message>
    <message>
        <source>формат даты</source>
        <translation>date format</translation>
    </message>
    <message>
        <source>формат времени</source>
        <translation>time format</translation>
    </message>
    <message>
        <source>файл не показан</source>
        <translation>the file is not shown</translation>
    </message>
    <message>
        <source>страница столбцов</source>
        <translation>columns page</translation>
    </message>
    <message>
        <source>нет списков</source>
        <translation>the lists are missing</translation>
    </message>
    <message>
        <source>роль столбца</source>
        <translation>role of the column</translation>
    </message>
    <message>
        <source>итог</source>
        <translation>result</translation>
    </message>
    <message>
        <source>бары сохранены</source>
        <translation>bars stored</translation>
    </message>
    <message>
        <source>не было файла %1</source>
        <translation>file %1 was missing</translation>
    </message>
    <message>
        <source>не удалён файл %1</source>
        <translation>file %1 was not removed</translation>
    </message>
    <message>
        <source>удалён файл %1</source>
        <translation>file %1 was removed</translation>
    </message>
    <message>
        <source>положить секундные файлы в хранилище</source>
        <translation>put second files into the store</translation>
    </message>
    <message>
        <source>секундные файлы лежат в хранилище</source>
        <translation>second files are in the store</translation>
    </message>
    <message>
        <source>файлы не записаны</source>
        <translation>the files are not written</translation>
    </message>
    <message>
        <source>выбрать раздел настроек</source>
        <translation>choose a section of the options</translation>
    </message>
    <message>
        <source>в настройках нет раздела</source>
        <translation>the options have no such section</translation>
    </message>
    <message>
        <source>страница настроек</source>
        <translation>options page</translation>
    </message>
    <message>
        <source>число дней нельзя ввести</source>
        <translation>the number of days cannot be entered</translation>
    </message>
    <message>
        <source>число дней</source>
        <translation>number of days</translation>
    </message>
    <message>
        <source>сохранить настройки</source>
        <translation>save the options</translation>
    </message>
    <message>
        <source>настройки сохранены</source>
        <translation>options saved</translation>
    </message>
    <message>
        <source>сохранено дней: %1</source>
        <translation>days saved: %1</translation>
    </message>
    <message>
        <source>старые секундные файлы удалены, остальные на месте</source>
        <translation>old second files are removed, the others are there</translation>
    </message>
    <message>
        <source>настройки не показаны: секундная история хранится по желанию пользователя</source>
        <translation>the options are not shown: the user wants to keep the history of seconds</translation>
    </message>
    <message>
        <source>меню не открыто</source>
        <translation>the menu is not open</translation>
    </message>
    <message>
        <source>в меню нет: %1</source>
        <translation>the menu does not have: %1</translation>
    </message>
    <message>
        <source>окно терминала</source>
        <translation>window of the terminal</translation>
    </message>
    <message>
        <source>окна нет, или перед ним другое</source>
        <translation>there is no window, or another one is in front of it</translation>
    </message>
    <message>
        <source>выбрать «%1»</source>
        <translation>choose &quot;%1&quot;</translation>
    </message>
    <message>
        <source>открыть список: %1</source>
        <translation>open the list: %1</translation>
    </message>
    <message>
        <source>нет списка</source>
        <translation>there is no list</translation>
    </message>
    <message>
        <source>список не открыт</source>
        <translation>the list is not open</translation>
    </message>
    <message>
        <source>перейти к полю: %1</source>
        <translation>go to the field: %1</translation>
    </message>
    <message>
        <source>нет поля</source>
        <translation>there is no field</translation>
    </message>
    <message>
        <source>ввести: %1</source>
        <translation>enter: %1</translation>
    </message>
    <message>
        <source>поле не активно</source>
        <translation>the field is not active</translation>
    </message>
    <message>
        <source>введено: %1</source>
        <translation>entered: %1</translation>
    </message>
    <message>
        <source>введено «%1»</source>
        <translation>entered: &quot;%1&quot;</translation>
    </message>
    <message>
        <source>площадка</source>
        <translation>venue</translation>
    </message>
    <message>
        <source>режим торгов</source>
        <translation>board</translation>
    </message>
    <message>
        <source>инструмент</source>
        <translation>security</translation>
    </message>
    <message>
        <source>выбрать из списка: %1</source>
        <translation>choose from the list: %1</translation>
    </message>
    <message>
        <source>в списке нет того, что нужно</source>
        <translation>the list does not have what is needed</translation>
    </message>
    <message>
        <source>выбрано: %1</source>
        <translation>chosen: %1</translation>
    </message>
    <message>
        <source>выбрано не то, что нужно</source>
        <translation>what is chosen is not what is needed</translation>
    </message>
    <message>
        <source>Невозможно записать в каталог %1</source>
        <translation>Cannot write to directory %1</translation>
    </message>
    <message>
        <source>Каталог для картинок.</source>
        <translation>Directory for the pictures.</translation>
    </message>
    <message>
        <source>Укажите один каталог для картинок.</source>
        <translation>Name one directory for the pictures.</translation>
    </message>
    <message>
        <source>мастер не открыт</source>
        <translation>the wizard is not open</translation>
    </message>
    <message>
        <source>дерево серий</source>
        <translation>tree of series</translation>
    </message>
    <message>
        <source>открыть серию двойным щелчком</source>
        <translation>open a series by a double click</translation>
    </message>
    <message>
        <source>в дереве нет импортированной серии</source>
        <translation>the tree does not have the imported series</translation>
    </message>
    <message>
        <source>контекстное меню графика</source>
        <translation>context menu of the chart</translation>
    </message>
    <message>
        <source>меню ещё открыто</source>
        <translation>the menu is still open</translation>
    </message>
    <message>
        <source>бар не прочитан</source>
        <translation>no bar is read out</translation>
    </message>
    <message>
        <source>дата, к которой перейти</source>
        <translation>the date to go to</translation>
    </message>
    <message>
        <source>перейти к дате</source>
        <translation>go to the date</translation>
    </message>
    <message>
        <source>окно не открыто</source>
        <translation>the window is not open</translation>
    </message>
    <message>
        <source>график у этой даты</source>
        <translation>the chart is at this date</translation>
    </message>
    <message>
        <source>график там же, где был</source>
        <translation>the chart is where it was</translation>
    </message>
    <message>
        <source>Показать терминал и его модули в работе: пройти график, импорт, правку, экспорт, настройки и качество данных, сохранить картинки шагов и выйти. Бары серии NORD/MAIN/ALFA с 15 по 17 января 2024 года заменяются.</source>
        <translation>Show the terminal and its plug-ins at work: go through the chart, the import, editing, the export, the options and the data quality, save pictures of the steps and quit. The bars of the series NORD/MAIN/ALFA from 15 to 17 January 2024 are replaced.</translation>
    </message>
    <message>
        <source>закрыть окно</source>
        <translation>close the window</translation>
    </message>
    <message>
        <source>окно закрыто</source>
        <translation>the window is closed</translation>
    </message>
    <message>
        <source>окно ещё открыто</source>
        <translation>the window is still open</translation>
    </message>
    <message>
        <source>импорт не проверен</source>
        <translation>the import has not been checked</translation>
    </message>
    <message>
        <source>открыть файл</source>
        <translation>open a file</translation>
    </message>
    <message>
        <source>инструмент из столбца</source>
        <translation>the security from the column</translation>
    </message>
    <message>
        <source>показать ошибочную строку</source>
        <translation>show the wrong line</translation>
    </message>
    <message>
        <source>ошибки не найдены</source>
        <translation>no faults have been found</translation>
    </message>
    <message>
        <source>пропускать ошибочные строки</source>
        <translation>pass over wrong lines</translation>
    </message>
    <message>
        <source>строка не выбрана</source>
        <translation>the line is not chosen</translation>
    </message>
    <message>
        <source>импортировать</source>
        <translation>import</translation>
    </message>
    <message>
        <source>импорт не закончен</source>
        <translation>the import is not finished</translation>
    </message>
    <message>
        <source>хранилище прочитано</source>
        <translation>the store has been read</translation>
    </message>
    <message>
        <source>серий ещё нет</source>
        <translation>there are no series yet</translation>
    </message>
    <message>
        <source>часть имени серии</source>
        <translation>part of a series&apos; name</translation>
    </message>
    <message>
        <source>показать на графике</source>
        <translation>show in the chart</translation>
    </message>
    <message>
        <source>найдена не одна серия</source>
        <translation>not one series has been found</translation>
    </message>
    <message>
        <source>график с отметками</source>
        <translation>the chart with its marks</translation>
    </message>
    <message>
        <source>отметок на графике нет</source>
        <translation>the chart shows no marks</translation>
    </message>
    <message>
        <source>точка ещё не показана</source>
        <translation>the point is not shown yet</translation>
    </message>
    <message>
        <source>вернуть точку</source>
        <translation>put the point back</translation>
    </message>
    <message>
        <source>точка ещё возвращается</source>
        <translation>the point is still being put back</translation>
    </message>
    <message>
        <source>в хранилище не то, что было</source>
        <translation>the store is not what it was</translation>
    </message>
    <message>
        <source>качество данных не показано: модуля нет</source>
        <translation>the data quality is not shown: the plug-in is missing</translation>
    </message>
</context>
<context>
    <name>vexdesk::VolumeByPrice</name>
    <message>
        <source>Объём по ценам</source>
        <translation>Volume by price</translation>
    </message>
    <message>
        <source>нет объёма</source>
        <translation>no volume</translation>
    </message>
</context>
</TS>
