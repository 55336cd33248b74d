<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="ru">
<context>
    <name>CalendarLegend</name>
    <message>
        <source>всё есть</source>
        <translation>all is there</translation>
    </message>
    <message>
        <source>почти всё</source>
        <translation>nearly all</translation>
    </message>
    <message>
        <source>почти ничего</source>
        <translation>next to nothing</translation>
    </message>
    <message>
        <source>не с чем сравнить</source>
        <translation>nothing to compare with</translation>
    </message>
    <message>
        <source>ошибки</source>
        <translation>faults</translation>
    </message>
    <message>
        <source>нет дня</source>
        <translation>day missing</translation>
    </message>
    <message>
        <source>под вопросом</source>
        <translation>in question</translation>
    </message>
    <message>
        <source>закрыто</source>
        <translation>closed</translation>
    </message>
</context>
<context>
    <name>CalendarModel</name>
    <message>
        <source>Пн</source>
        <translation>Mo</translation>
    </message>
    <message>
        <source>Вт</source>
        <translation>Tu</translation>
    </message>
    <message>
        <source>Ср</source>
        <translation>We</translation>
    </message>
    <message>
        <source>Чт</source>
        <translation>Th</translation>
    </message>
    <message>
        <source>Пт</source>
        <translation>Fr</translation>
    </message>
    <message>
        <source>Сб</source>
        <translation>Sa</translation>
    </message>
    <message>
        <source>Вс</source>
        <translation>Su</translation>
    </message>
</context>
<context>
    <name>DayRemarks</name>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Нет баров с %1 по %2 (%3), как и у соседей</source>
        <translation>No bars from %1 to %2 (%3), as on the whole board</translation>
    </message>
    <message>
        <source>Нет баров с %1 по %2 (%3)</source>
        <translation>No bars from %1 to %2 (%3)</translation>
    </message>
    <message>
        <source>Скачок цены в %1</source>
        <translation>The price jumps at %1</translation>
    </message>
    <message>
        <source>Не записи баров: строки %1</source>
        <translation>Not bar records: lines %1</translation>
    </message>
    <message>
        <source>Невозможных цен: %1</source>
        <translation>Impossible prices: %1</translation>
    </message>
    <message>
        <source>Повторов времени: %1</source>
        <translation>Repeated times: %1</translation>
    </message>
    <message>
        <source>Строк не по порядку: %1</source>
        <translation>Lines out of order: %1</translation>
    </message>
    <message>
        <source>Слишком больших объёмов: %1</source>
        <translation>Volumes that are too large: %1</translation>
    </message>
    <message>
        <source>Правленых строк: %1</source>
        <translation>Edited lines: %1</translation>
    </message>
    <message>
        <source>Нет файла дня, а у соседей он есть</source>
        <translation>No file of this day, though others of the board have one</translation>
    </message>
    <message>
        <source>Нет файла дня, сравнить не с чем</source>
        <translation>No file of this day, and nothing to compare with</translation>
    </message>
    <message>
        <source>Нет файла дня ни у одной серии: закрыто</source>
        <translation>No series has a file of this day: closed</translation>
    </message>
    <message>
        <source>минуты</source>
        <translation>minutes</translation>
    </message>
    <message>
        <source>секунды</source>
        <translation>seconds</translation>
    </message>
    <message>
        <source>ничего не хранится</source>
        <translation>nothing is stored</translation>
    </message>
    <message>
        <source>менее 100 %</source>
        <translation>below 100 %</translation>
    </message>
    <message>
        <source>мало данных</source>
        <translation>too little data</translation>
    </message>
    <message>
        <source>не оценивается</source>
        <translation>not judged</translation>
    </message>
    <message>
        <source>баров: %L1, обычно %L2, покрытие %3</source>
        <translation>bars: %L1, usually %L2, coverage %3</translation>
    </message>
    <message>
        <source>баров: %L1, для оценки покрытия мало данных</source>
        <translation>bars: %L1, too little data to judge the coverage</translation>
    </message>
    <message>
        <source>баров: %L1</source>
        <translation>bars: %L1</translation>
    </message>
</context>
<context>
    <name>DayStrip</name>
    <message>
        <source>Что станет с днями</source>
        <translation>What becomes of the days</translation>
    </message>
</context>
<context>
    <name>FilesPicker</name>
    <message>
        <source>&amp;Открыть...</source>
        <translation>&amp;Open...</translation>
    </message>
    <message>
        <source>откройте файл или перетащите его сюда</source>
        <translation>open a file or drag it here</translation>
    </message>
    <message>
        <source>&amp;Недавние</source>
        <translation>Re&amp;cent</translation>
    </message>
    <message>
        <source>&amp;Файл:</source>
        <translation>&amp;File:</translation>
    </message>
    <message>
        <source>%1 (%2 из %3)</source>
        <translation>%1 (%2 of %3)</translation>
    </message>
    <message>
        <source>Файлы для импорта</source>
        <translation>Files to import</translation>
    </message>
    <message>
        <source>Текстовые файлы (*.txt *.csv);;Все файлы (*)</source>
        <translation>Text files (*.txt *.csv);;All files (*)</translation>
    </message>
</context>
<context>
    <name>FreeSpaceDialog</name>
    <message>
        <source>Освободить место</source>
        <translation>Free space</translation>
    </message>
    <message>
        <source> МБ</source>
        <translation> MB</translation>
    </message>
    <message>
        <source>&amp;Удалить точки</source>
        <translation>&amp;Remove points</translation>
    </message>
    <message>
        <source>Оставить &amp;новейших точек:</source>
        <translation>Keep the &amp;newest points:</translation>
    </message>
    <message>
        <source>и не больше &amp;места:</source>
        <translation>and no more r&amp;oom than:</translation>
    </message>
    <message>
        <source>Удалять нечего: самая новая точка остаётся всегда.</source>
        <translation>There is nothing to remove: the newest point always stays.</translation>
    </message>
    <message>
        <source>Будет удалено точек: %L1, освободится %2. То, что они хранят, вернуть потом будет нельзя. Сами данные при этом не меняются.</source>
        <translation>Points to be removed: %L1, which frees %2. What they keep cannot be put back after that. The data themselves do not change.</translation>
    </message>
    <message>
        <source>&amp;Отмена</source>
        <translation>&amp;Cancel</translation>
    </message>
</context>
<context>
    <name>HealthMarks</name>
    <message>
        <source>%1. Пока этот день не прочитан, другие дни серии не проверены</source>
        <translation>%1. While this day is not read, the other days of the series are not checked</translation>
    </message>
    <message>
        <source>Секунды: %1</source>
        <translation>Seconds: %1</translation>
    </message>
</context>
<context>
    <name>HealthPass</name>
    <message>
        <source>Невозможно прочитать каталог %1</source>
        <translation>Cannot read the directory %1</translation>
    </message>
    <message>
        <source>Невозможно открыть файл %1</source>
        <translation>Cannot open the file %1</translation>
    </message>
    <message>
        <source>Файл %1 изменился, пока его читали</source>
        <translation>The file %1 changed while it was read</translation>
    </message>
    <message>
        <source>Невозможно прочитать файл %1: %2</source>
        <translation>Cannot read the file %1: %2</translation>
    </message>
    <message>
        <source>это не обычный файл</source>
        <translation>it is no regular file</translation>
    </message>
</context>
<context>
    <name>HealthWindow</name>
    <message>
        <source>Невозможно записать файл %1: %2</source>
        <translation>Cannot write the file %1: %2</translation>
    </message>
    <message>
        <source>Здоровье данных</source>
        <translation>Data health</translation>
    </message>
    <message>
        <source>часть имени, например VEGA</source>
        <translation>part of a name, such as VEGA</translation>
    </message>
    <message>
        <source>&amp;Найти серию:</source>
        <translation>F&amp;ind a series:</translation>
    </message>
    <message>
        <source>Серии хранилища</source>
        <translation>Series of the store</translation>
    </message>
    <message>
        <source>Сколько прочитано</source>
        <translation>How much has been read</translation>
    </message>
    <message>
        <source>Календарь покрытия выбранной серии</source>
        <translation>Calendar of the coverage of the chosen series</translation>
    </message>
    <message>
        <source>Что не так в выбранный день</source>
        <translation>What is wrong on the chosen day</translation>
    </message>
    <message>
        <source>&amp;Закрыть</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>&amp;Показать на графике</source>
        <translation>&amp;Show in the chart</translation>
    </message>
    <message>
        <source>&amp;Дозаполнить из файла...</source>
        <translation>&amp;Fill from a file...</translation>
    </message>
    <message>
        <source>&amp;Список для брокера...</source>
        <translation>&amp;List for the broker...</translation>
    </message>
    <message>
        <source>Дни показанных серий, которых не хватает: с разрывами и без файла</source>
        <translation>The days that the shown series lack: those with gaps and those without a file</translation>
    </message>
    <message>
        <source>Показано серий: %L1 из %L2, с замечаниями: %L3.</source>
        <translation>Series shown: %L1 of %L2, with something wrong: %L3.</translation>
    </message>
    <message>
        <source>Серий: %L1, с замечаниями: %L2.</source>
        <translation>Series: %L1, with something wrong: %L2.</translation>
    </message>
    <message>
        <source>В хранилище нет серий.</source>
        <translation>There are no series in the store.</translation>
    </message>
    <message>
        <source>Хранилище читается...</source>
        <translation>The store is being read...</translation>
    </message>
    <message>
        <source>Не прочитано: %L1. %2</source>
        <translation>Not read: %L1. %2</translation>
    </message>
    <message>
        <source>Список для брокера</source>
        <translation>List for the broker</translation>
    </message>
    <message>
        <source>Текстовые файлы (*.txt);;Все файлы (*)</source>
        <translation>Text files (*.txt);;All files (*)</translation>
    </message>
    <message>
        <source>Список записан в %1.</source>
        <translation>The list was written to %1.</translation>
    </message>
    <message>
        <source>У этого терминала нет графиков: показать место негде.</source>
        <translation>This terminal has no charts: there is nowhere to show the place.</translation>
    </message>
    <message>
        <source>График не показан: от серии %1 ничего не хранится.</source>
        <translation>No chart is shown: nothing of the series %1 is stored.</translation>
    </message>
    <message>
        <source>нет файла</source>
        <translation>no file</translation>
    </message>
    <message>
        <source>%1, %2: %3</source>
        <translation>%1, %2: %3</translation>
    </message>
    <message>
        <source>Запрашивать нечего: в показанных сериях есть все дни, и разрывов нет.</source>
        <translation>Nothing to ask for: the shown series have all days and no gaps.</translation>
    </message>
    <message>
        <source>Список записан в %1. В нём не всё: хранилище прочитано не полностью.</source>
        <translation>The list was written to %1. It is not complete: the store was not read to its end.</translation>
    </message>
    <message>
        <source>В хранилище нет дня %1 серии %2: график показывает ближайшее место.</source>
        <translation>Day %1 of series %2 is not in the store: the chart shows the nearest place.</translation>
    </message>
    <message>
        <source>; остальное названо в подсказке</source>
        <translation>; the rest is named in the tool tip</translation>
    </message>
</context>
<context>
    <name>LayoutPicker</name>
    <message>
        <source>&amp;Заголовок</source>
        <translation>&amp;Header</translation>
    </message>
    <message>
        <source>Первая строка файла — названия столбцов</source>
        <translation>The first line of the file names the columns</translation>
    </message>
    <message>
        <source>табуляция</source>
        <translation>tab</translation>
    </message>
    <message>
        <source>черта (|)</source>
        <translation>bar (|)</translation>
    </message>
    <message>
        <source>1 минута</source>
        <translation>1 minute</translation>
    </message>
    <message>
        <source>1 секунда</source>
        <translation>1 second</translation>
    </message>
    <message>
        <source>не выбран</source>
        <translation>not chosen</translation>
    </message>
    <message>
        <source>&amp;Разделитель:</source>
        <translation>&amp;Separator:</translation>
    </message>
    <message>
        <source>&amp;Дата:</source>
        <translation>&amp;Date:</translation>
    </message>
    <message>
        <source>&amp;Время:</source>
        <translation>&amp;Time:</translation>
    </message>
    <message>
        <source>&amp;Бар:</source>
        <translation>Ba&amp;r:</translation>
    </message>
    <message>
        <source>гмдчмс</source>
        <translation>ymdhms</translation>
    </message>
</context>
<context>
    <name>OutlookPanel</name>
    <message>
        <source>На что посмотреть в файле</source>
        <translation>What to look at in the file</translation>
    </message>
    <message>
        <source>теряет бары</source>
        <translation>loses bars</translation>
    </message>
    <message>
        <source>Импорт пройдёт до конца.</source>
        <translation>The import would come to its end.</translation>
    </message>
    <message>
        <source>Смотрю, что будет сделано: %1 %</source>
        <translation>Looking at what would be done: %1 %</translation>
    </message>
</context>
<context>
    <name>PointFilesModel</name>
    <message>
        <source>минуты</source>
        <translation>minutes</translation>
    </message>
    <message>
        <source>секунды</source>
        <translation>seconds</translation>
    </message>
    <message>
        <source>минуты из секунд</source>
        <translation>minutes from seconds</translation>
    </message>
    <message>
        <source>создан</source>
        <translation>created</translation>
    </message>
    <message>
        <source>удалён</source>
        <translation>removed</translation>
    </message>
    <message>
        <source>изменён</source>
        <translation>changed</translation>
    </message>
    <message>
        <source>вернётся прежний</source>
        <translation>the old one returns</translation>
    </message>
    <message>
        <source>будет удалён</source>
        <translation>will be removed</translation>
    </message>
    <message>
        <source>изменился</source>
        <translation>has changed</translation>
    </message>
    <message>
        <source>такой же</source>
        <translation>the same</translation>
    </message>
    <message>
        <source>Серия</source>
        <translation>Series</translation>
    </message>
    <message>
        <source>День</source>
        <translation>Day</translation>
    </message>
    <message>
        <source>Бары</source>
        <translation>Bars</translation>
    </message>
    <message>
        <source>Что сделано</source>
        <translation>What was done</translation>
    </message>
    <message>
        <source>При возврате</source>
        <translation>When put back</translation>
    </message>
    <message>
        <source>С тех пор</source>
        <translation>Since then</translation>
    </message>
    <message>
        <source>неизвестно</source>
        <translation>unknown</translation>
    </message>
</context>
<context>
    <name>PointWords</name>
    <message>
        <source>импорт</source>
        <translation>import</translation>
    </message>
    <message>
        <source>импорт со слиянием</source>
        <translation>merging import</translation>
    </message>
    <message>
        <source>дозаполнение</source>
        <translation>filling</translation>
    </message>
    <message>
        <source>правка</source>
        <translation>edit</translation>
    </message>
    <message>
        <source>удаление</source>
        <translation>deletion</translation>
    </message>
    <message>
        <source>копирование</source>
        <translation>copy</translation>
    </message>
    <message>
        <source>переименование</source>
        <translation>renaming</translation>
    </message>
    <message>
        <source>возврат</source>
        <translation>putting back</translation>
    </message>
    <message>
        <source>%1 Б</source>
        <translation>%1 B</translation>
    </message>
    <message>
        <source>%1 КБ</source>
        <translation>%1 KB</translation>
    </message>
    <message>
        <source>%1 МБ</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1 ГБ</source>
        <translation>%1 GB</translation>
    </message>
    <message>
        <source>%1 и ещё %L2</source>
        <translation>%1 and %L2 more</translation>
    </message>
    <message>
        <source>Команда была прервана на середине: %1, %2, серии: %3. Вернуть данные, какими они были до неё, можно в окне «Точки восстановления».</source>
        <translation>A command was interrupted halfway: %1, %2, series: %3. The data can be put back as they were before it in the window &quot;Restore points&quot;.</translation>
    </message>
</context>
<context>
    <name>PointsModel</name>
    <message>
        <source>%1 (прервано)</source>
        <translation>%1 (interrupted)</translation>
    </message>
    <message>
        <source>Точка %1</source>
        <translation>Point %1</translation>
    </message>
    <message>
        <source>и ещё %L1</source>
        <translation>and %L1 more</translation>
    </message>
    <message>
        <source>Когда</source>
        <translation>When</translation>
    </message>
    <message>
        <source>Что сделано</source>
        <translation>What was done</translation>
    </message>
    <message>
        <source>Серии</source>
        <translation>Series</translation>
    </message>
    <message>
        <source>Источник</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>Файлов</source>
        <translation>Files</translation>
    </message>
    <message>
        <source>Занимает</source>
        <translation>Size</translation>
    </message>
    <message>
        <source>%1 (идёт)</source>
        <translation>%1 (running)</translation>
    </message>
    <message>
        <source>Команда ещё идёт. Вернуть её можно будет, когда она закончится.</source>
        <translation>The command is still running. It can be put back when it has ended.</translation>
    </message>
    <message>
        <source>Команда была прервана. То, что она успела изменить, можно вернуть.</source>
        <translation>The command was interrupted. What it has changed can be put back.</translation>
    </message>
    <message>
        <source>%1 (прервано, возвращено)</source>
        <translation>%1 (interrupted, put back)</translation>
    </message>
    <message>
        <source>Команда была прервана. То, что она успела изменить, уже возвращено.</source>
        <translation>The command was interrupted. What it had changed is put back already.</translation>
    </message>
</context>
<context>
    <name>PointsWindow</name>
    <message>
        <source>Точки восстановления</source>
        <translation>Restore points</translation>
    </message>
    <message>
        <source>Точки восстановления, новые первыми</source>
        <translation>Restore points, the newest first</translation>
    </message>
    <message>
        <source>Файлы выбранной точки</source>
        <translation>Files of the chosen point</translation>
    </message>
    <message>
        <source>&amp;Закрыть</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>&amp;Вернуть</source>
        <translation>&amp;Put back</translation>
    </message>
    <message>
        <source>Сделать файлы такими, какими они были до этой команды. Это можно отменить: возврат сам создаёт точку.</source>
        <translation>Make the files what they were before this command. It can be undone: putting back makes a point itself.</translation>
    </message>
    <message>
        <source>&amp;Освободить место...</source>
        <translation>&amp;Free space...</translation>
    </message>
    <message>
        <source>Точек восстановления нет: команды, которые меняют данные, создают их сами.</source>
        <translation>There are no restore points: commands that change data make them by themselves.</translation>
    </message>
    <message>
        <source>Точек: %L1, занимают %2.</source>
        <translation>Points: %L1, they take %2.</translation>
    </message>
    <message>
        <source>Точка проверяется...</source>
        <translation>Checking the point...</translation>
    </message>
    <message>
        <source>Возврат вернёт прежних файлов: %L1, удалит созданных: %L2.</source>
        <translation>Putting back returns old files: %L1, removes created ones: %L2.</translation>
    </message>
    <message>
        <source>С тех пор изменились файлы: %L1; без особого подтверждения точка не возвращается.</source>
        <translation>Files that have changed since: %L1; the point is not put back without a confirmation.</translation>
    </message>
    <message>
        <source>Точка %1 возвращается...</source>
        <translation>Point %1 is being put back...</translation>
    </message>
    <message>
        <source>Точка не возвращена: файлы с тех пор изменились. Ничего не тронуто.</source>
        <translation>The point was not put back: files have changed since. Nothing was touched.</translation>
    </message>
    <message>
        <source>Точка не возвращена. %1</source>
        <translation>The point was not put back. %1</translation>
    </message>
    <message>
        <source>Файлы возвращены, но: %1</source>
        <translation>The files were put back, but: %1</translation>
    </message>
    <message>
        <source>Возвращено файлов: %L1, удалено: %L2. Чтобы отменить это, верните новую точку.</source>
        <translation>Files put back: %L1, removed: %L2. To undo this, put the new point back.</translation>
    </message>
    <message>
        <source>Файлы с тех пор изменились</source>
        <translation>Files have changed since</translation>
    </message>
    <message>
        <source>После этой команды изменились файлы: %L1. Возврат заменит и их; то, что в них сейчас, останется в новой точке.

%2</source>
        <translation>Files that have changed after this command: %L1. Putting back replaces them too; what they hold now stays in a new point.

%2</translation>
    </message>
    <message>
        <source>&amp;Отмена</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>&amp;Вернуть всё равно</source>
        <translation>&amp;Put back all the same</translation>
    </message>
    <message>
        <source>Старые точки удаляются...</source>
        <translation>Old points are being removed...</translation>
    </message>
    <message>
        <source>Старые точки удалены.</source>
        <translation>The old points were removed.</translation>
    </message>
    <message>
        <source>Удалены не все точки. %1</source>
        <translation>Not all points were removed. %1</translation>
    </message>
    <message>
        <source>Подождите: команда ещё идёт. Окно можно будет закрыть, когда она закончится.</source>
        <translation>Please wait: a command is still running. The window can be closed when it has ended.</translation>
    </message>
    <message>
        <source>Прервано на середине команд: %L1. Выберите точку с пометкой «прервано» и верните данные, какими они были до неё.</source>
        <translation>Commands interrupted halfway: %L1. Choose the point marked &quot;interrupted&quot; and put the data back as they were before it.</translation>
    </message>
    <message>
        <source>Вернуть прерванное</source>
        <translation>Put back what was interrupted</translation>
    </message>
    <message>
        <source>Команда была прервана: %1, серии: %2.

Возврат вернёт прежних файлов: %L3 и удалит созданных: %L4, даже если после неё их меняли. То, что в них сейчас, останется в новой точке.</source>
        <translation>The command was interrupted: %1, series: %2.

Former files that will be put back: %L3, created ones that will be removed: %L4, even if they were changed since. What they hold now stays in a new point.</translation>
    </message>
    <message>
        <source>Работа была прервана: изменились ли файлы с тех пор, неизвестно.</source>
        <translation>The work was interrupted: whether files have changed since is not known.</translation>
    </message>
    <message>
        <source>Работа была прервана, и эта точка уже возвращена: возвращать нечего.</source>
        <translation>The work was interrupted, and this point is put back already: nothing is left to be put back.</translation>
    </message>
</context>
<context>
    <name>PreviewView</name>
    <message>
        <source>Строки файла</source>
        <translation>Lines of the file</translation>
    </message>
</context>
<context>
    <name>RemarksModel</name>
    <message>
        <source>Ошибка</source>
        <translation>Fault</translation>
    </message>
    <message>
        <source>Внимание</source>
        <translation>Warning</translation>
    </message>
    <message>
        <source>К сведению</source>
        <translation>Note</translation>
    </message>
</context>
<context>
    <name>RestorePointsForm</name>
    <message>
        <source>не создавать</source>
        <translation>none</translation>
    </message>
    <message>
        <source> МБ</source>
        <translation> MB</translation>
    </message>
    <message>
        <source>&amp;Хранить точек восстановления:</source>
        <translation>&amp;Keep restore points:</translation>
    </message>
    <message>
        <source>&amp;Места для них, не больше:</source>
        <translation>&amp;Room for them, at most:</translation>
    </message>
    <message>
        <source>Команды, которые меняют данные, в том числе tadata, сохраняют прежние файлы. Самые старые точки удаляются, когда их больше, чем указано; самая новая остаётся всегда.</source>
        <translation>Commands that change data, those of tadata too, keep the files as they were. The oldest points are removed when there are more than this; the newest always stays.</translation>
    </message>
    <message>
        <source>Без точек восстановления импорт, правку и удаление отменить нельзя.</source>
        <translation>Without restore points an import, an edit or a deletion cannot be undone.</translation>
    </message>
</context>
<context>
    <name>RestorePointsPage</name>
    <message>
        <source>Точки восстановления</source>
        <translation>Restore points</translation>
    </message>
    <message>
        <source>Качество данных ТА</source>
        <translation>TA data quality</translation>
    </message>
    <message>
        <source>точки восстановления</source>
        <translation>restore points</translation>
    </message>
    <message>
        <source>возврат</source>
        <translation>putting back</translation>
    </message>
    <message>
        <source>отмена импорта</source>
        <translation>undo an import</translation>
    </message>
    <message>
        <source>место на диске</source>
        <translation>disk space</translation>
    </message>
</context>
<context>
    <name>RolesHeader</name>
    <message>
        <source>не брать</source>
        <translation>not taken</translation>
    </message>
    <message>
        <source>Дата</source>
        <translation>Date</translation>
    </message>
    <message>
        <source>Время</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>Открытие</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>Максимум</source>
        <translation>High</translation>
    </message>
    <message>
        <source>Минимум</source>
        <translation>Low</translation>
    </message>
    <message>
        <source>Закрытие</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Объём</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>Деньги</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>Откр. инт.</source>
        <translation>Open int.</translation>
    </message>
    <message>
        <source>Тикер</source>
        <translation>Ticker</translation>
    </message>
    <message>
        <source>Что в столбце %1</source>
        <translation>What column %1 holds</translation>
    </message>
</context>
<context>
    <name>SafeImport</name>
    <message>
        <source>Выберите площадку, режим торгов и инструмент.</source>
        <translation>Choose a venue, a board and an instrument.</translation>
    </message>
    <message>
        <source>Назовите над таблицей столбец с тикером: инструмент берётся из него.</source>
        <translation>Name the ticker column above the table: the instrument is taken from it.</translation>
    </message>
    <message>
        <source>Инструмента %1 нет в справочнике терминала: неизвестно, сколько знаков после точки в его ценах.</source>
        <translation>The terminal&apos;s reference data do not hold %1: it is not known how many digits its prices have after the point.</translation>
    </message>
    <message>
        <source>дата</source>
        <translation>date</translation>
    </message>
    <message>
        <source>время</source>
        <translation>time</translation>
    </message>
    <message>
        <source>цена открытия</source>
        <translation>opening price</translation>
    </message>
    <message>
        <source>максимальная цена</source>
        <translation>highest price</translation>
    </message>
    <message>
        <source>минимальная цена</source>
        <translation>lowest price</translation>
    </message>
    <message>
        <source>цена закрытия</source>
        <translation>closing price</translation>
    </message>
    <message>
        <source>Выберите разделитель столбцов: угадать его не удалось.</source>
        <translation>Choose what separates the columns: it could not be guessed.</translation>
    </message>
    <message>
        <source>Назовите над таблицей столбцы: %1.</source>
        <translation>Name these columns above the table: %1.</translation>
    </message>
    <message>
        <source>Выберите вид даты.</source>
        <translation>Choose the form of the date.</translation>
    </message>
    <message>
        <source>Выберите вид даты, подходят: %1.</source>
        <translation>Choose the form of the date; these fit: %1.</translation>
    </message>
    <message>
        <source>Выберите вид времени.</source>
        <translation>Choose the form of the time.</translation>
    </message>
    <message>
        <source>Ни одной строки взять нельзя: все ошибочные.</source>
        <translation>No line can be taken: all of them are bad.</translation>
    </message>
    <message>
        <source>новый</source>
        <translation>new</translation>
    </message>
    <message>
        <source>без изменений</source>
        <translation>unchanged</translation>
    </message>
    <message>
        <source>заменяется</source>
        <translation>replaced</translation>
    </message>
    <message>
        <source>дополняется</source>
        <translation>added to</translation>
    </message>
    <message>
        <source>Дней новых: %1, без изменений: %2, заменяемых: %3, дополняемых: %4</source>
        <translation>Days new: %1, unchanged: %2, replaced: %3, added to: %4</translation>
    </message>
    <message>
        <source>Ни один бар не пропадёт</source>
        <translation>No bar gets lost</translation>
    </message>
    <message>
        <source>Пропадёт баров: %1</source>
        <translation>Bars that get lost: %1</translation>
    </message>
    <message>
        <source>Серий: %1</source>
        <translation>Series: %1</translation>
    </message>
    <message>
        <source>%1: %2; баров в файле: %3, хранится: %4, станет: %5</source>
        <translation>%1: %2; bars in the file: %3, stored: %4, afterwards: %5</translation>
    </message>
    <message>
        <source>, пропадёт: %1</source>
        <translation>, lost: %1</translation>
    </message>
    <message>
        <source>Код &apos;%1&apos; не может быть именем каталога</source>
        <translation>The code &apos;%1&apos; cannot be the name of a directory</translation>
    </message>
    <message>
        <source>Файл %1 изменился с тех пор, как был показан. Посмотрите, что будет сделано теперь.</source>
        <translation>File %1 has changed since it was shown. See what would be done now.</translation>
    </message>
    <message>
        <source>Импорт не отменён: эти файлы с тех пор изменились
%1</source>
        <translation>The import is not undone: these files have changed since
%1</translation>
    </message>
    <message>
        <source>режимом «Добавить»</source>
        <translation>the mode &quot;Add&quot;</translation>
    </message>
    <message>
        <source>и ещё %1</source>
        <translation>and %1 more</translation>
    </message>
    <message>
        <source>День %1 серии %2 есть в нескольких файлах: %3. При замене дней от него останется только то, что есть в последнем из них. Выберите «Добавить» или импортируйте эти файлы по одному.</source>
        <translation>The day %1 of the series %2 is in several files: %3. Where days are replaced, only what the last of them has of it would stay. Choose &quot;Add&quot;, or import these files one by one.</translation>
    </message>
    <message>
        <source>Дней, которые есть в нескольких файлах: %1; сказанное о них верно для каждого файла по отдельности</source>
        <translation>Days that are in several files: %1; what is said of them is true of each file alone</translation>
    </message>
    <message>
        <source>; день есть в нескольких файлах</source>
        <translation>; the day is in several files</translation>
    </message>
    <message>
        <source>Дни в каталоге %1 изменились с тех пор, как было показано, что сделает импорт. Посмотрите, что будет сделано теперь.</source>
        <translation>The days in the directory %1 have changed since you were shown what the import will do. Look at what will be done now.</translation>
    </message>
    <message>
        <source>Новых баров: %1, заменит значения баров: %2</source>
        <translation>New bars: %1, values of bars replaced: %2</translation>
    </message>
    <message>
        <source> (дней: %1)</source>
        <translation> (days: %1)</translation>
    </message>
    <message>
        <source>Баров в файле: %1, из них ничего не изменят: %2; ошибочных строк: %3</source>
        <translation>Bars in the file: %1, of which change nothing: %2; bad lines: %3</translation>
    </message>
    <message>
        <source>Файлов, в которых ничего не сосчитано: %1</source>
        <translation>Files in which nothing was counted: %1</translation>
    </message>
    <message>
        <source>, заменит значения: %1</source>
        <translation>, values replaced: %1</translation>
    </message>
    <message>
        <source>Жду, пока другая программа освободит серию %1...</source>
        <translation>Waiting for another program to release the series %1...</translation>
    </message>
    <message>
        <source>Жду, пока %1 (процесс %2, компьютер %3) освободит серию %4...</source>
        <translation>Waiting for %1 (process %2, computer %3) to release the series %4...</translation>
    </message>
    <message>
        <source>Столбец объёма не взят, в нём не целые числа: у баров из файла объёма не будет.</source>
        <translation>The column of the volume is left out, it does not hold whole numbers: bars of the file will have no volume.</translation>
    </message>
    <message>
        <source>Столбец открытого интереса не взят, в нём не целые числа: у баров из файла его не будет.</source>
        <translation>The column of the open interest is left out, it does not hold whole numbers: bars of the file will have none.</translation>
    </message>
    <message>
        <source>Баров в файле: %1; ошибочных строк: %2</source>
        <translation>Bars in the file: %1; bad lines: %2</translation>
    </message>
    <message>
        <source>Столбцы, которые не взяты: %1</source>
        <translation>Columns that are left out: %1</translation>
    </message>
    <message>
        <source>Первая строка файла — бар, и как заголовок она будет пропущена. Если это не названия столбцов, снимите флажок «Заголовок».</source>
        <translation>The first line of the file is a bar, and as a header it will be passed over. If it does not name the columns, clear the box &quot;Header&quot;.</translation>
    </message>
    <message>
        <source>Строк с тикером другого инструмента: %1 (%2). Все они попадут в серию %3. Чтобы у каждого тикера была своя серия, выберите инструмент «из столбца».</source>
        <translation>Lines with the ticker of another security: %1 (%2). All of them will go into the series %3. For a series of its own for each ticker choose the instrument &quot;of a column&quot;.</translation>
    </message>
    <message>
        <source>Файл %1 сохранён в кодировке %2, и угадать его устройство нельзя. Сохраните его в UTF-8 или windows-1251 и откройте снова, или выберите всё сами.</source>
        <translation>The file %1 is in the encoding %2, and its layout cannot be guessed. Save it as UTF-8 or windows-1251 and open it again, or choose everything yourself.</translation>
    </message>
    <message>
        <source>Баров, которые файл заменяет сам, потому что возвращается к их дню: %1</source>
        <translation>Bars that the file replaces itself, since it comes back to their day: %1</translation>
    </message>
    <message>
        <source>. Исправьте или удалите этот файл, или выберите «Заменить дни»: тогда день будет записан заново, а прежние его бары пропадут.</source>
        <translation>. Mend or remove this file, or choose &quot;Replace days&quot;: the day is then written anew, and the bars that it had are lost.</translation>
    </message>
</context>
<context>
    <name>SafeImportWindow</name>
    <message>
        <source>Отменить его нельзя: точки возврата выключены в настройках.</source>
        <translation>It cannot be undone: restore points are switched off in the settings.</translation>
    </message>
    <message>
        <source>Безопасный импорт</source>
        <translation>Safe import</translation>
    </message>
    <message>
        <source>Параметры, сохранённые командой tadata profile save</source>
        <translation>Options saved by the command tadata profile save</translation>
    </message>
    <message>
        <source>&amp;Профиль:</source>
        <translation>&amp;Profile:</translation>
    </message>
    <message>
        <source>Доб&amp;авить</source>
        <translation>&amp;Add</translation>
    </message>
    <message>
        <source>Бары файла добавляются к хранимым и заменяют бары с тем же временем</source>
        <translation>The bars of the file come in among the stored ones and replace those of their times</translation>
    </message>
    <message>
        <source>Дозапо&amp;лнить</source>
        <translation>F&amp;ill</translation>
    </message>
    <message>
        <source>Добавляются только бары, времени которых в хранилище нет</source>
        <translation>Only bars whose times the store lacks come in</translation>
    </message>
    <message>
        <source>За&amp;менить дни</source>
        <translation>R&amp;eplace days</translation>
    </message>
    <message>
        <source>Дни, которые есть в файле, заменяются целиком</source>
        <translation>The days that the file has are replaced as a whole</translation>
    </message>
    <message>
        <source>Пропускать о&amp;шибочные строки</source>
        <translation>S&amp;kip bad lines</translation>
    </message>
    <message>
        <source>&amp;Импортировать</source>
        <translation>I&amp;mport</translation>
    </message>
    <message>
        <source>Отм&amp;енить импорт</source>
        <translation>&amp;Undo the import</translation>
    </message>
    <message>
        <source>Импорт отменён: всё стало, как было до него.</source>
        <translation>The import is undone: all is as it was before.</translation>
    </message>
    <message>
        <source>Файл изменился и прочитан заново.</source>
        <translation>The file has changed and was read anew.</translation>
    </message>
    <message>
        <source>без профиля</source>
        <translation>no profile</translation>
    </message>
    <message>
        <source>Параметры профиля, которые здесь не действуют: %1</source>
        <translation>Options of the profile that mean nothing here: %1</translation>
    </message>
    <message>
        <source>Откройте файл или перетащите его в это окно: ещё до импорта здесь будет видно, что он сделает.</source>
        <translation>Open a file or drag it into this window: what the import would do is shown here beforehand.</translation>
    </message>
    <message>
        <source>Импортирую...</source>
        <translation>Importing...</translation>
    </message>
    <message>
        <source>Отменяю импорт...</source>
        <translation>Undoing the import...</translation>
    </message>
    <message>
        <source>Импорт закончен. %1</source>
        <translation>The import is done. %1</translation>
    </message>
    <message>
        <source>Импорт прерван: всё, что он изменил, возвращено.</source>
        <translation>The import was cancelled: everything that it had changed was put back.</translation>
    </message>
    <message>
        <source>Импорт не удался, всё, что он изменил, возвращено. %1</source>
        <translation>The import has failed, and everything that it had changed was put back. %1</translation>
    </message>
    <message>
        <source>Прервать</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Закр&amp;ыть</source>
        <translation>C&amp;lose</translation>
    </message>
    <message>
        <source>Возвращаю всё, как было...</source>
        <translation>Putting everything back...</translation>
    </message>
    <message>
        <source>Пропало баров: %1.</source>
        <translation>Bars lost: %1.</translation>
    </message>
    <message>
        <source>Посмотреть заново</source>
        <translation>Look again</translation>
    </message>
    <message>
        <source>Пока импорт не закончен, другие файлы и серии не берутся. Повторите это, когда он закончится.</source>
        <translation>No other files and series are taken until the import has ended. Try again then.</translation>
    </message>
    <message>
        <source>Инструмент прежнего файла снят: выберите инструмент для нового.</source>
        <translation>The security of the file before is no longer chosen: choose the one of the new file.</translation>
    </message>
    <message>
        <source>Инструменты берутся из столбца с тикером.</source>
        <translation>The securities come from the column of tickers.</translation>
    </message>
    <message>
        <source>Инструмент выбран по имени файла: %1.</source>
        <translation>The security was chosen by the name of the file: %1.</translation>
    </message>
    <message>
        <source>Новых баров: %1, заменены значения баров: %2, записано дней: %3, осталось прежними дней: %4; баров файла, которые ничего не изменили: %5, ошибочных строк: %6.</source>
        <translation>New bars: %1, values of bars replaced: %2, days written: %3, days that stayed as they were: %4; bars of the file that changed nothing: %5, bad lines: %6.</translation>
    </message>
</context>
<context>
    <name>SeriesModel</name>
    <message>
        <source>Серия</source>
        <translation>Series</translation>
    </message>
    <message>
        <source>Бары</source>
        <translation>Bars</translation>
    </message>
    <message>
        <source>Покрытие</source>
        <translation>Coverage</translation>
    </message>
    <message>
        <source>Разрывы</source>
        <translation>Gaps</translation>
    </message>
    <message>
        <source>Нет дней</source>
        <translation>Days missing</translation>
    </message>
    <message>
        <source>Ошибки</source>
        <translation>Faults</translation>
    </message>
    <message>
        <source>Скачки</source>
        <translation>Jumps</translation>
    </message>
    <message>
        <source>Баров</source>
        <translation>Bars stored</translation>
    </message>
    <message>
        <source>С</source>
        <translation>From</translation>
    </message>
    <message>
        <source>По</source>
        <translation>To</translation>
    </message>
    <message>
        <source>Биржа, режим торгов и инструмент</source>
        <translation>Venue, board and security</translation>
    </message>
    <message>
        <source>Длина баров</source>
        <translation>Length of the bars</translation>
    </message>
    <message>
        <source>Доля обычных времён, в которые есть бары</source>
        <translation>The share of the usual times at which there are bars</translation>
    </message>
    <message>
        <source>Сколько раз подряд не хватает пяти обычных времён и больше</source>
        <translation>How often five usual times or more are missing in a row</translation>
    </message>
    <message>
        <source>Дни, которые есть у соседних серий, а здесь их нет</source>
        <translation>Days that series of the same board have and this one has not</translation>
    </message>
    <message>
        <source>Строки не баров, повторы времени, невозможные цены</source>
        <translation>Lines that are no bars, repeated times, impossible prices</translation>
    </message>
    <message>
        <source>Открытия дальше 10 % от закрытия предыдущего бара</source>
        <translation>Opens more than 10 % away from the close of the bar before</translation>
    </message>
    <message>
        <source>Сколько баров хранится</source>
        <translation>How many bars are stored</translation>
    </message>
    <message>
        <source>Первый хранимый день</source>
        <translation>The first stored day</translation>
    </message>
    <message>
        <source>Последний хранимый день</source>
        <translation>The last stored day</translation>
    </message>
</context>
<context>
    <name>SeriesPicker</name>
    <message>
        <source>Пло&amp;щадка:</source>
        <translation>&amp;Venue:</translation>
    </message>
    <message>
        <source>Режим &amp;торгов:</source>
        <translation>&amp;Board:</translation>
    </message>
    <message>
        <source>Инстр&amp;умент:</source>
        <translation>I&amp;nstrument:</translation>
    </message>
    <message>
        <source>Инструмент</source>
        <translation>Instrument</translation>
    </message>
    <message>
        <source>выбранный</source>
        <translation>chosen</translation>
    </message>
    <message>
        <source>Откуда берётся код инструмента: выбран здесь, из столбца «Тикер» каждого файла или из его имени</source>
        <translation>Where the code of the instrument comes from: chosen here, from the column &quot;Ticker&quot; of each file, or from its name</translation>
    </message>
    <message>
        <source>из столбца</source>
        <translation>of a column</translation>
    </message>
    <message>
        <source>из имени файла</source>
        <translation>of the file name</translation>
    </message>
</context>
<context>
    <name>TADataQuality</name>
    <message>
        <source>Качество данных ТА</source>
        <translation>TA data quality</translation>
    </message>
    <message>
        <source>Орвента</source>
        <translation>Orventa</translation>
    </message>
    <message>
        <source>Безопасный импорт, здоровье и точки восстановления исторических данных</source>
        <translation>Safe import, health and restore points of historical data</translation>
    </message>
    <message>
        <source>Тех. &amp;анализ</source>
        <translation>Technical &amp;analysis</translation>
    </message>
    <message>
        <source>&amp;Качество данных ТА</source>
        <translation>TA data &amp;quality</translation>
    </message>
    <message>
        <source>&amp;Безопасный импорт...</source>
        <translation>&amp;Safe import...</translation>
    </message>
    <message>
        <source>&amp;Здоровье данных...</source>
        <translation>Data &amp;health...</translation>
    </message>
    <message>
        <source>&amp;Точки восстановления...</source>
        <translation>&amp;Restore points...</translation>
    </message>
    <message>
        <source>Технический анализ</source>
        <translation>Technical analysis</translation>
    </message>
</context>
<context>
    <name>tadata::ProblemsModel</name>
    <message>
        <source>… и ещё %1</source>
        <translation>… and %1 more</translation>
    </message>
    <message>
        <source>строка %1</source>
        <translation>line %1</translation>
    </message>
</context>
</TS>
