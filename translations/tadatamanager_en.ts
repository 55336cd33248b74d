<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="ru">
<context>
    <name>BadLines</name>
    <message>
        <source>Файл %1 для ошибочных строк стал бы файлом дня этой же серии. Выберите другое место</source>
        <translation>The file %1 for bad lines would become a day file of this very series. Choose another place</translation>
    </message>
</context>
<context>
    <name>BarDescription</name>
    <message>
        <source>Некорректное значение поля &apos;Объём в шт.&apos; (%1)</source>
        <translation>Invalid value of the field &apos;Volume&apos; (%1)</translation>
    </message>
    <message>
        <source>Некорректное значение поля &apos;Открытый интерес&apos; (%1)</source>
        <translation>Invalid value of the field &apos;Open interest&apos; (%1)</translation>
    </message>
    <message>
        <source>Недостаточное количество столбцов</source>
        <translation>Too few columns</translation>
    </message>
    <message>
        <source>Дата &apos;%1&apos; не соответствует заявленному формату &apos;%2&apos;</source>
        <translation>The date &apos;%1&apos; does not match the stated format &apos;%2&apos;</translation>
    </message>
    <message>
        <source>Время &apos;%1&apos; не соответствует заявленному формату &apos;%2&apos;</source>
        <translation>The time &apos;%1&apos; does not match the stated format &apos;%2&apos;</translation>
    </message>
</context>
<context>
    <name>BarSorter</name>
    <message>
        <source>Временный файл для сортировки в %1: %2</source>
        <translation>Temporary file for sorting in %1: %2</translation>
    </message>
    <message>
        <source>Временный файл для сортировки в %1: нет такого каталога</source>
        <translation>Temporary file for sorting in %1: there is no such directory</translation>
    </message>
</context>
<context>
    <name>ColumnsHeader</name>
    <message>
        <source>Не импор-ть</source>
        <translation>Skip</translation>
    </message>
    <message>
        <source>Дата окон-я</source>
        <translation>End date</translation>
    </message>
    <message>
        <source>Вр. окон-я</source>
        <translation>End time</translation>
    </message>
    <message>
        <source>Цена откр.</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>Цена макс.</source>
        <translation>High</translation>
    </message>
    <message>
        <source>Цена мин.</source>
        <translation>Low</translation>
    </message>
    <message>
        <source>Цена закр.</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Объем в шт.</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>Объем в ден.</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>Откр. инт.</source>
        <translation>Open int.</translation>
    </message>
</context>
<context>
    <name>ColumnsImportPage</name>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; color:#ff0000;&quot;&gt;Что-то не так... &lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; color:#ff0000;&quot;&gt;Something is wrong... &lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Столбцы</source>
        <translation>Columns</translation>
    </message>
    <message>
        <source>Выберите единственный столбец &apos;%1&apos;; </source>
        <translation>Choose exactly one column &apos;%1&apos;; </translation>
    </message>
    <message>
        <source>Выберите не более одного столбца &apos;%1&apos;; </source>
        <translation>Choose no more than one column &apos;%1&apos;; </translation>
    </message>
</context>
<context>
    <name>EditorTADataDialog</name>
    <message>
        <source>Редактирование данных ТА</source>
        <translation>Edit TA data</translation>
    </message>
    <message>
        <source>Серия</source>
        <translation>Series</translation>
    </message>
    <message>
        <source>Площадка:</source>
        <translation>Venue:</translation>
    </message>
    <message>
        <source>Режим торгов:</source>
        <translation>Board:</translation>
    </message>
    <message>
        <source>Инструмент:</source>
        <translation>Security:</translation>
    </message>
    <message>
        <source>Таймфрейм:</source>
        <translation>Timeframe:</translation>
    </message>
    <message>
        <source>Интервал:</source>
        <translation>Period:</translation>
    </message>
    <message>
        <source>с</source>
        <translation>from</translation>
    </message>
    <message>
        <source>по</source>
        <translation>to</translation>
    </message>
    <message>
        <source>Показать</source>
        <translation>Show</translation>
    </message>
    <message>
        <source>Исторические данные</source>
        <translation>Historical data</translation>
    </message>
    <message>
        <source>Удалить</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Найти</source>
        <translation>Find</translation>
    </message>
    <message>
        <source>Закрыть</source>
        <translation>Close</translation>
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
        <source>Удалённые бары остались в файлах. %1</source>
        <translation>The deleted bars are still in the files. %1</translation>
    </message>
</context>
<context>
    <name>EditorTADataModel</name>
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
        <source>Объём в шт.</source>
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
        <source>он изменился, пока его читали</source>
        <translation>it changed while it was being read</translation>
    </message>
    <message>
        <source>Бары файла %1 не показаны, потому что его не удалось прочитать до конца: %2; покажите интервал ещё раз или импортируйте этот день заново.</source>
        <translation>The bars of the file %1 are not shown, because it could not be read to its end: %2; show the range again or import this day anew.</translation>
    </message>
    <message>
        <source>Файл %1 не переписан: он появился после того, как был показан интервал; покажите интервал ещё раз и повторите удаление.</source>
        <translation>The file %1 was not rewritten: it appeared after the range was shown; show the range again and repeat the deletion.</translation>
    </message>
    <message>
        <source>Файл %1 не переписан: его не удалось прочитать; проверьте права на файл или импортируйте этот день заново.</source>
        <translation>The file %1 was not rewritten: it could not be read; check the permissions of the file or import this day anew.</translation>
    </message>
</context>
<context>
    <name>ExportTADataWizard</name>
    <message>
        <source>Мастер экспорта данных ТА</source>
        <translation>TA data export wizard</translation>
    </message>
    <message>
        <source>Файл существует</source>
        <translation>File exists</translation>
    </message>
    <message>
        <source>Файл с таким именем уже существует и будет перезаписан при экспорте. Все равно продолжить?</source>
        <translation>A file with this name already exists and will be overwritten by the export. Continue anyway?</translation>
    </message>
</context>
<context>
    <name>ExporterTAData</name>
    <message>
        <source>Экспорт</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>Экспортирую...</source>
        <translation>Exporting...</translation>
    </message>
    <message>
        <source>Успешное завершение экспорта</source>
        <translation>Export completed</translation>
    </message>
    <message>
        <source>Экспорт данных ТА успешно завершен</source>
        <translation>TA data exported successfully</translation>
    </message>
    <message>
        <source>Невозможно открыть файл %1</source>
        <translation>Cannot open file %1</translation>
    </message>
    <message>
        <source>Невозможно записать файл %1</source>
        <translation>Cannot write file %1</translation>
    </message>
    <message>
        <source>Невозможно прочитать файл %1: %2</source>
        <translation>Cannot read file %1: %2</translation>
    </message>
    <message>
        <source>Файл %1 — файл дня в хранилище: выгрузка стёрла бы его бары. Выберите другой файл</source>
        <translation>File %1 is a day file of the store: the export would wipe its bars. Choose another file</translation>
    </message>
    <message>
        <source>Ошибка</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>он изменился, пока его читали</source>
        <translation>it was changed while it was read</translation>
    </message>
    <message>
        <source>Невозможно прочитать каталог %1</source>
        <translation>Cannot read the directory %1</translation>
    </message>
</context>
<context>
    <name>FileBars</name>
    <message>
        <source>Код &apos;%1&apos; не может быть именем каталога</source>
        <translation>The code &apos;%1&apos; cannot be the name of a directory</translation>
    </message>
</context>
<context>
    <name>FileClock</name>
    <message>
        <source>Время &apos;%1&apos; пропущено часами зоны %2</source>
        <translation>The clock of zone %2 skips the time &apos;%1&apos;</translation>
    </message>
</context>
<context>
    <name>FormatExportPage</name>
    <message>
        <source>Формат строки:</source>
        <translation>Line format:</translation>
    </message>
    <message>
        <source>Разделитель:</source>
        <translation>Separator:</translation>
    </message>
    <message>
        <source>Формат даты:</source>
        <translation>Date format:</translation>
    </message>
    <message>
        <source>Формат времени:</source>
        <translation>Time format:</translation>
    </message>
    <message>
        <source>Добавить заголовок</source>
        <translation>Add a header line</translation>
    </message>
    <message>
        <source>Формат</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>запятая (,)</source>
        <translation>comma (,)</translation>
    </message>
    <message>
        <source>точка с запятой (;)</source>
        <translation>semicolon (;)</translation>
    </message>
    <message>
        <source>пробел ( )</source>
        <translation>space ( )</translation>
    </message>
    <message>
        <source>ггггммдд</source>
        <translation>yyyymmdd</translation>
    </message>
    <message>
        <source>ггммдд</source>
        <translation>yymmdd</translation>
    </message>
    <message>
        <source>ддммгг</source>
        <translation>ddmmyy</translation>
    </message>
    <message>
        <source>дд.мм.гг</source>
        <translation>dd.mm.yy</translation>
    </message>
    <message>
        <source>дд/мм/гг</source>
        <translation>dd/mm/yy</translation>
    </message>
    <message>
        <source>ччммсс</source>
        <translation>hhmmss</translation>
    </message>
    <message>
        <source>ччмм</source>
        <translation>hhmm</translation>
    </message>
    <message>
        <source>чч:мм:сс</source>
        <translation>hh:mm:ss</translation>
    </message>
    <message>
        <source>чч:мм</source>
        <translation>hh:mm</translation>
    </message>
</context>
<context>
    <name>FormatImportPage</name>
    <message>
        <source>Первая строка содержит заголовок</source>
        <translation>The first line is a header</translation>
    </message>
    <message>
        <source>Разделитель:</source>
        <translation>Separator:</translation>
    </message>
    <message>
        <source>Формат даты:</source>
        <translation>Date format:</translation>
    </message>
    <message>
        <source>Формат времени:</source>
        <translation>Time format:</translation>
    </message>
    <message>
        <source>Импортируемый файл</source>
        <translation>File to import</translation>
    </message>
    <message>
        <source>Формат</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>не задан</source>
        <translation>not set</translation>
    </message>
    <message>
        <source>запятая (,)</source>
        <translation>comma (,)</translation>
    </message>
    <message>
        <source>точка с запятой (;)</source>
        <translation>semicolon (;)</translation>
    </message>
    <message>
        <source>пробел ( )</source>
        <translation>space ( )</translation>
    </message>
    <message>
        <source>ггггммдд</source>
        <translation>yyyymmdd</translation>
    </message>
    <message>
        <source>ггммдд</source>
        <translation>yymmdd</translation>
    </message>
    <message>
        <source>ддммгг</source>
        <translation>ddmmyy</translation>
    </message>
    <message>
        <source>дд.мм.гг</source>
        <translation>dd.mm.yy</translation>
    </message>
    <message>
        <source>дд/мм/гг</source>
        <translation>dd/mm/yy</translation>
    </message>
    <message>
        <source>ччммсс</source>
        <translation>hhmmss</translation>
    </message>
    <message>
        <source>ччмм</source>
        <translation>hhmm</translation>
    </message>
    <message>
        <source>чч:мм:сс</source>
        <translation>hh:mm:ss</translation>
    </message>
    <message>
        <source>чч:мм</source>
        <translation>hh:mm</translation>
    </message>
</context>
<context>
    <name>ImportCheck</name>
    <message>
        <source>Ошибочные строки</source>
        <translation>Bad lines</translation>
    </message>
    <message>
        <source>Файл возвращается к дню, прежние бары дня пропадут</source>
        <translation>The file comes back to a day, whose earlier bars would be lost</translation>
    </message>
    <message>
        <source>Время раньше, чем у предыдущего бара</source>
        <translation>Time is less than that of the bar before</translation>
    </message>
    <message>
        <source>Бар с таким временем уже был</source>
        <translation>The file has had a bar of that time</translation>
    </message>
    <message>
        <source>Невозможные цены</source>
        <translation>Impossible prices</translation>
    </message>
    <message>
        <source>Лишние знаки после точки будут округлены</source>
        <translation>More digits after the point than are kept: they would be rounded</translation>
    </message>
    <message>
        <source>Объём больше 2147483647: графики и экспорт прочтут 0</source>
        <translation>Volume above 2147483647: charts and export would read 0</translation>
    </message>
    <message>
        <source>Время 00:00:00 закрывает предыдущий день</source>
        <translation>Time 00:00:00 closes the day before</translation>
    </message>
    <message>
        <source>Бары файла, похоже, не такой длины</source>
        <translation>The bars of the file seem to have another length</translation>
    </message>
    <message>
        <source>В датах, похоже, переставлены день и месяц или день и год</source>
        <translation>Day and month, or day and year, seem to be exchanged in the dates</translation>
    </message>
</context>
<context>
    <name>ImportOptions</name>
    <message>
        <source>роли «%1» нет</source>
        <translation>there is no role &quot;%1&quot;</translation>
    </message>
    <message>
        <source>«%1» не называет номера столбца</source>
        <translation>&quot;%1&quot; names no column number</translation>
    </message>
    <message>
        <source>роль «%1» названа дважды</source>
        <translation>the role &quot;%1&quot; is named twice</translation>
    </message>
    <message>
        <source>столбец %1 назначен дважды</source>
        <translation>column %1 is assigned twice</translation>
    </message>
    <message>
        <source>нет роли «%1»</source>
        <translation>the role &quot;%1&quot; is missing</translation>
    </message>
</context>
<context>
    <name>ImportProfiles</name>
    <message>
        <source>Невозможно записать файл настроек терминала</source>
        <translation>Cannot write the terminal&apos;s settings file</translation>
    </message>
</context>
<context>
    <name>ImportTADataWizard</name>
    <message>
        <source>Мастер импорта данных ТА</source>
        <translation>TA data import wizard</translation>
    </message>
</context>
<context>
    <name>ImporterTAData</name>
    <message>
        <source>Выбор файла для импорта</source>
        <translation>Choose a file to import</translation>
    </message>
    <message>
        <source>Текстовые файлы (*.txt *.csv)</source>
        <translation>Text files (*.txt *.csv)</translation>
    </message>
    <message>
        <source>Ошибка открытия файла</source>
        <translation>Error opening the file</translation>
    </message>
    <message>
        <source>Невозможно открыть файл %1</source>
        <translation>Cannot open file %1</translation>
    </message>
    <message>
        <source>Пустой файл</source>
        <translation>Empty file</translation>
    </message>
    <message>
        <source>Файл %1 пуст</source>
        <translation>File %1 is empty</translation>
    </message>
    <message>
        <source>Импорт</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>Импортирую...</source>
        <translation>Importing...</translation>
    </message>
    <message>
        <source>Успешное завершение импорта</source>
        <translation>Import completed</translation>
    </message>
    <message>
        <source>Импорт данных ТА успешно завершен</source>
        <translation>TA data imported successfully</translation>
    </message>
    <message>
        <source>Невозможно записать файл %1</source>
        <translation>Cannot write file %1</translation>
    </message>
    <message>
        <source>Ошибка при импорте %1-й строки:
%2.</source>
        <translation>Error importing line %1:
%2.</translation>
    </message>
    <message>
        <source>Невозможно прочитать файл %1: %2</source>
        <translation>Cannot read file %1: %2</translation>
    </message>
    <message>
        <source>Файл %1 лежит в хранилище как файл дня этой же серии: импорт стёр бы его. Скопируйте его в другое место и импортируйте копию</source>
        <translation>File %1 lies in the store as a day file of this very series: the import would wipe it. Copy it to another place and import the copy</translation>
    </message>
    <message>
        <source>Ошибка</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Импорт прерван</source>
        <translation>The import was interrupted</translation>
    </message>
    <message>
        <source>строка длиннее 256 МБ</source>
        <translation>a line is longer than 256 MB</translation>
    </message>
    <message>
        <source>формат файлов в UTF-16 и UTF-32 не угадывается; сохраните файл в UTF-8 или задайте --columns</source>
        <translation>the format of files in UTF-16 and UTF-32 is not guessed; save the file as UTF-8 or give --columns</translation>
    </message>
    <message>
        <source>файл стал короче, пока его читали</source>
        <translation>the file became shorter while it was read</translation>
    </message>
    <message>
        <source>он изменился, пока его читали</source>
        <translation>it has changed while it was being read</translation>
    </message>
    <message>
        <source>Невозможно прочитать каталог %1</source>
        <translation>Cannot read the directory %1</translation>
    </message>
    <message>
        <source>Файл %1, строка %2: не запись бара</source>
        <translation>File %1, line %2: not a bar record</translation>
    </message>
    <message>
        <source>файл возвращается к коду &apos;%1&apos;, такой файл импортируют с --mode merge</source>
        <translation>the file comes back to the code &apos;%1&apos;; such a file is imported with --mode merge</translation>
    </message>
    <message>
        <source>Невозможно создать каталог %1: %2</source>
        <translation>Cannot make the directory %1: %2</translation>
    </message>
    <message>
        <source>это не обычный файл</source>
        <translation>it is no regular file</translation>
    </message>
</context>
<context>
    <name>OutcomeBox</name>
    <message>
        <source>

(показано начало сообщения, не показано символов: %L1)</source>
        <translation>

(the beginning of the message is shown, characters not shown: %L1)</translation>
    </message>
</context>
<context>
    <name>SeriesExportPage</name>
    <message>
        <source>Площадка:</source>
        <translation>Venue:</translation>
    </message>
    <message>
        <source>Режим торгов:</source>
        <translation>Board:</translation>
    </message>
    <message>
        <source>Инструмент:</source>
        <translation>Security:</translation>
    </message>
    <message>
        <source>Интервал:</source>
        <translation>Period:</translation>
    </message>
    <message>
        <source>с</source>
        <translation>from</translation>
    </message>
    <message>
        <source>по</source>
        <translation>to</translation>
    </message>
    <message>
        <source>Таймфрейм:</source>
        <translation>Timeframe:</translation>
    </message>
    <message>
        <source>Выходной файл:</source>
        <translation>Output file:</translation>
    </message>
    <message>
        <source>Путь:</source>
        <translation>Path:</translation>
    </message>
    <message>
        <source>Серия</source>
        <translation>Series</translation>
    </message>
    <message>
        <source>1 секунда</source>
        <translation>1 second</translation>
    </message>
    <message>
        <source>1 минута</source>
        <translation>1 minute</translation>
    </message>
    <message>
        <source>5 минут</source>
        <translation>5 minutes</translation>
    </message>
    <message>
        <source>10 минут</source>
        <translation>10 minutes</translation>
    </message>
    <message>
        <source>30 минут</source>
        <translation>30 minutes</translation>
    </message>
    <message>
        <source>1 час</source>
        <translation>1 hour</translation>
    </message>
    <message>
        <source>1 день</source>
        <translation>1 day</translation>
    </message>
    <message>
        <source>Выбор директории для экспорта</source>
        <translation>Choose a directory for the export</translation>
    </message>
</context>
<context>
    <name>SeriesImportPage</name>
    <message>
        <source>Площадка:</source>
        <translation>Venue:</translation>
    </message>
    <message>
        <source>Режим торгов:</source>
        <translation>Board:</translation>
    </message>
    <message>
        <source>Инструмент:</source>
        <translation>Security:</translation>
    </message>
    <message>
        <source>Таймфрейм:</source>
        <translation>Timeframe:</translation>
    </message>
    <message>
        <source>Серия</source>
        <translation>Series</translation>
    </message>
    <message>
        <source>1 минута</source>
        <translation>1 minute</translation>
    </message>
    <message>
        <source>1 секунда</source>
        <translation>1 second</translation>
    </message>
</context>
<context>
    <name>TADataManager</name>
    <message>
        <source>Управление данными ТА</source>
        <translation>TA data management</translation>
    </message>
    <message>
        <source>Орвента</source>
        <translation>Orventa</translation>
    </message>
    <message>
        <source>Управление историческими данными для графиков</source>
        <translation>Management of historical data for charts</translation>
    </message>
    <message>
        <source>Тех. &amp;анализ</source>
        <translation>Technical &amp;analysis</translation>
    </message>
    <message>
        <source>&amp;Управление данными ТА</source>
        <translation>&amp;TA data management</translation>
    </message>
    <message>
        <source>&amp;Импортировать...</source>
        <translation>&amp;Import...</translation>
    </message>
    <message>
        <source>&amp;Экспортировать...</source>
        <translation>&amp;Export...</translation>
    </message>
    <message>
        <source>&amp;Редактировать...</source>
        <translation>E&amp;dit...</translation>
    </message>
    <message>
        <source>Технический анализ</source>
        <translation>Technical analysis</translation>
    </message>
</context>
<context>
    <name>TADataManagerPropertiesForm</name>
    <message>
        <source>Form</source>
        <translation>Form</translation>
    </message>
    <message>
        <source>Удалять историю в &quot;секундах&quot; по истечении </source>
        <translation>Delete history in &quot;seconds&quot; after </translation>
    </message>
    <message>
        <source>дн.</source>
        <translation>days</translation>
    </message>
</context>
<context>
    <name>TADataManagerPropertiesPage</name>
    <message>
        <source>Общее</source>
        <translation>General</translation>
    </message>
    <message>
        <source>Истор. данные ТА</source>
        <translation>TA history data</translation>
    </message>
</context>
</TS>
