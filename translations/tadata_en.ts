<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="ru">
<context>
    <name>tadata</name>
    <message>
        <source>Невозможно записать в стандартный вывод</source>
        <translation>Cannot write to standard output</translation>
    </message>
    <message>
        <source>«%1» — не целое число</source>
        <translation>&quot;%1&quot; is not an integer</translation>
    </message>
    <message>
        <source>«%1» — не число</source>
        <translation>&quot;%1&quot; is not a number</translation>
    </message>
    <message>
        <source>полей %1, а нужно от %2 до %3</source>
        <translation>fields: %1, needed: %2 to %3</translation>
    </message>
    <message>
        <source>Невозможно открыть файл %1</source>
        <translation>Cannot open file %1</translation>
    </message>
    <message>
        <source>%1: первая строка — сделка, а должна быть заголовком</source>
        <translation>%1: the first line is a deal, but must be a heading</translation>
    </message>
    <message>
        <source>%1, строка %2: %3</source>
        <translation>%1, line %2: %3</translation>
    </message>
    <message>
        <source>Нет каталога %1</source>
        <translation>There is no directory %1</translation>
    </message>
    <message>
        <source>инструмента %1/%2/%3 нет в справочнике: задайте --decimals, число знаков после точки в ценах</source>
        <translation>the reference data do not hold the security %1/%2/%3: give --decimals, the number of digits after the point in prices</translation>
    </message>
    <message>
        <source>лишнее слово «%1»</source>
        <translation>superfluous word &quot;%1&quot;</translation>
    </message>
    <message>
        <source>нет команды</source>
        <translation>there is no command</translation>
    </message>
    <message>
        <source>неизвестная команда «%1»</source>
        <translation>unknown command &quot;%1&quot;</translation>
    </message>
    <message>
        <source>tadata: %1
Подсказка: tadata --help</source>
        <translation>tadata: %1
Hint: tadata --help</translation>
    </message>
    <message>
        <source>Невозможно прочитать файл %1: %2</source>
        <translation>Cannot read file %1: %2</translation>
    </message>
    <message>
        <source>Невозможно открыть файл %1: его баров в выгрузке нет</source>
        <translation>Cannot open file %1: its bars are not in the export</translation>
    </message>
    <message>
        <source>Ни одного бара не импортировано: в файле %1 их нет</source>
        <translation>No bar was imported: file %1 holds none</translation>
    </message>
    <message>
        <source>Невозможно прочитать каталог %1: того, что в нём, в списке нет</source>
        <translation>Cannot read directory %1: what is in it is not in the list</translation>
    </message>
    <message>
        <source>неверное значение «%1»</source>
        <translation>wrong value &quot;%1&quot;</translation>
    </message>
    <message>
        <source>неверное значение «%1»: %2</source>
        <translation>wrong value &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>--%1: %2; нужно: %3</source>
        <translation>--%1: %2; needed: %3</translation>
    </message>
    <message>
        <source>у команды %1 нет параметра %2</source>
        <translation>the command %1 has no option %2</translation>
    </message>
    <message>
        <source>%1 не принимает значения: «%2»</source>
        <translation>%1 takes no value: &quot;%2&quot;</translation>
    </message>
    <message>
        <source>%1: нет значения; нужно: %2</source>
        <translation>%1: the value is missing; needed: %2</translation>
    </message>
    <message>
        <source>%1 задан дважды</source>
        <translation>%1 is given twice</translation>
    </message>
    <message>
        <source>%1 задан дважды: «%2» и «%3»</source>
        <translation>%1 is given twice: &quot;%2&quot; and &quot;%3&quot;</translation>
    </message>
    <message>
        <source>--%1 «%2» задан без --%3; нужно и то и другое: %4</source>
        <translation>--%1 &quot;%2&quot; is given without --%3; both are needed: %4</translation>
    </message>
    <message>
        <source>не задано: %1</source>
        <translation>missing: %1</translation>
    </message>
    <message>
        <source>Эта подсказка; после команды — всё о команде. То же, что -h.</source>
        <translation>This help; after a command, all about the command. The same as -h.</translation>
    </message>
    <message>
        <source>Версия.</source>
        <translation>The version.</translation>
    </message>
    <message>
        <source>ПЛОЩАДКА/РЕЖИМ/ИНСТРУМЕНТ</source>
        <translation>VENUE/BOARD/SECURITY</translation>
    </message>
    <message>
        <source>Серия: коды площадки, режима торгов и инструмента.</source>
        <translation>The series: codes of venue, board and security.</translation>
    </message>
    <message>
        <source>три кода через «/», ни один из них не пустой, не «.» и не «..»</source>
        <translation>three codes with &quot;/&quot; between them, none of them empty, &quot;.&quot; or &quot;..&quot;</translation>
    </message>
    <message>
        <source>ТЕКСТ</source>
        <translation>TEXT</translation>
    </message>
    <message>
        <source>Что стоит между столбцами.</source>
        <translation>What stands between columns.</translation>
    </message>
    <message>
        <source>непустой текст без перевода строки или слово comma, semicolon, space, tab</source>
        <translation>a text that is not empty and has no line end, or one of the words comma, semicolon, space, tab</translation>
    </message>
    <message>
        <source>КАТАЛОГ</source>
        <translation>DIR</translation>
    </message>
    <message>
        <source>Каталог с папками площадок. Без него — хранилище терминала.</source>
        <translation>The directory with the folders of the venues. Without it, the terminal&apos;s own store.</translation>
    </message>
    <message>
        <source>имя каталога</source>
        <translation>the name of a directory</translation>
    </message>
    <message>
        <source>ФАЙЛ</source>
        <translation>FILE</translation>
    </message>
    <message>
        <source>Справочник площадок, режимов и инструментов. Без него — справочник терминала.</source>
        <translation>Venues, boards and securities. Without it, those of the terminal.</translation>
    </message>
    <message>
        <source>имя файла</source>
        <translation>the name of a file</translation>
    </message>
    <message>
        <source>раньше, чем --from %1</source>
        <translation>earlier than --from %1</translation>
    </message>
    <message>
        <source>позже, чем сегодня, %1: выгружать нечего</source>
        <translation>after today, %1: there is nothing to export</translation>
    </message>
    <message>
        <source>это и файл %1, который был бы записан</source>
        <translation>it is also the file %1 that would be written</translation>
    </message>
    <message>
        <source>Файл %1 стал бы файлом дня в хранилище: их пишет только импорт. Выберите другой файл</source>
        <translation>File %1 would become a day file of the store, which only an import writes. Choose another file</translation>
    </message>
    <message>
        <source>ДЕНЬ</source>
        <translation>DAY</translation>
    </message>
    <message>
        <source>дата вида 2024-01-31</source>
        <translation>a date such as 2024-01-31</translation>
    </message>
    <message>
        <source>Первый день, не позже сегодняшнего.</source>
        <translation>The first day, not after today.</translation>
    </message>
    <message>
        <source>Последний день; дни после сегодняшнего пропускаются.</source>
        <translation>The last day; days after today are passed over.</translation>
    </message>
    <message>
        <source>СЕКУНДЫ</source>
        <translation>SECONDS</translation>
    </message>
    <message>
        <source>Длина бара. Секундные бары делаются из хранимых секундных, все остальные — из хранимых минутных.</source>
        <translation>Length of a bar. Second bars are made from the stored second bars, all others from the stored minute bars.</translation>
    </message>
    <message>
        <source>СПИСОК</source>
        <translation>NAMES</translation>
    </message>
    <message>
        <source>Какие столбцы выгружать. Порядок столбцов всегда как в значении по умолчанию; строка кончается после последнего из названных. Неизвестное название ничего не пишет.</source>
        <translation>Which columns to write. They always stand in the order of the default; a line ends after the last one of those named. A name that is not known writes nothing.</translation>
    </message>
    <message>
        <source>названия через запятую</source>
        <translation>names separated by commas</translation>
    </message>
    <message>
        <source>ВИД</source>
        <translation>PATTERN</translation>
    </message>
    <message>
        <source>Вид даты.</source>
        <translation>How a date is written.</translation>
    </message>
    <message>
        <source>вид, в котором есть число (d или dd), месяц (M или MM) и год (yy или yyyy); большие и малые буквы различаются</source>
        <translation>a pattern with day (d or dd), month (M or MM) and year (yy or yyyy); capital and small letters differ</translation>
    </message>
    <message>
        <source>Вид времени.</source>
        <translation>How a time is written.</translation>
    </message>
    <message>
        <source>вид, в котором есть часы (h или hh) и минуты (m или mm) и могут быть секунды (s или ss) и их доли (z или zzz); большие и малые буквы различаются</source>
        <translation>a pattern with hours (h or hh) and minutes (m or mm), and if wanted seconds (s or ss) and their fractions (z or zzz); capital and small letters differ</translation>
    </message>
    <message>
        <source>Без строки с названиями столбцов.</source>
        <translation>No line with the names of the columns.</translation>
    </message>
    <message>
        <source>Сделки сегодняшнего дня: под заголовком столбцы moment_ms_utc, price, quantity и, если нужно, open_interest и value, через запятую; пустое поле — отсутствующее значение. Момент — миллисекунды с 1970 года по UTC.</source>
        <translation>The deals of today: below a heading the columns moment_ms_utc, price, quantity and, if wanted, open_interest and value, separated by commas; an empty field is an absent value. The moment is in milliseconds since 1970, in UTC.</translation>
    </message>
    <message>
        <source>Какой день считать сегодняшним: дни до него берутся из хранилища, он сам — из сделок. Без него — текущая дата.</source>
        <translation>Which day counts as today: days before it are taken from the store, it itself from the deals. Without it, the current date.</translation>
    </message>
    <message>
        <source>Записать хранимые бары в текстовый файл.</source>
        <translation>Write stored bars to a text file.</translation>
    </message>
    <message>
        <source>Записывает бары серии в текстовый файл. Файл, который уже есть, заменяется. За каждую строку хранилища пишется бар, каким он стал к ней, и ещё раз — когда он закончен: законченный бар — последняя строка со своим временем. Файл дня, который нельзя открыть, назван в стандартном выводе ошибок, и код завершения тогда 1.</source>
        <translation>Writes the bars of a series to a text file, which is replaced when it exists. For each line of the store the bar is written as it stands then, and once more when it is finished: the last line of each time is the finished bar. A day file that cannot be opened is named on standard error, and the exit status is then 1.</translation>
    </message>
    <message>
        <source>Значение: %1.</source>
        <translation>Value: %1.</translation>
    </message>
    <message>
        <source>По умолчанию %1.</source>
        <translation>By default %1.</translation>
    </message>
    <message>
        <source>Только вместе с --%1.</source>
        <translation>Only together with --%1.</translation>
    </message>
    <message>
        <source>Обязателен.</source>
        <translation>Mandatory.</translation>
    </message>
    <message>
        <source>[параметры]</source>
        <translation>[options]</translation>
    </message>
    <message>
        <source>Использование:</source>
        <translation>Usage:</translation>
    </message>
    <message>
        <source>Пример:</source>
        <translation>Example:</translation>
    </message>
    <message>
        <source>tadata — бары для графиков терминала из командной строки</source>
        <translation>tadata - bars for the charts of the terminal, from the command line</translation>
    </message>
    <message>
        <source>Код завершения: 0 — сделано; 1 — не удалось, причина в стандартном выводе ошибок; 2 — неверная командная строка.</source>
        <translation>Exit code: 0 - done; 1 - failed, standard error says why; 2 - the command line is wrong.</translation>
    </message>
    <message>
        <source>Сообщения — на языке пользователя или на том, который назван в переменной окружения TADATA_LANGUAGE: ru или en.</source>
        <translation>The messages are in the language of the user, or in the one that the environment variable TADATA_LANGUAGE names: ru or en.</translation>
    </message>
    <message>
        <source>в кодах не может быть управляющих символов и того, что не UTF-8</source>
        <translation>codes cannot have control characters or what is no UTF-8</translation>
    </message>
    <message>
        <source>РОЛЬ=СТОЛБЕЦ,...</source>
        <translation>ROLE=COLUMN,...</translation>
    </message>
    <message>
        <source>Длина бара. Из секундных баров строятся и минутные, в отдельный файл.</source>
        <translation>Length of a bar. Second bars also make minute bars, in a file of their own.</translation>
    </message>
    <message>
        <source>Вид даты. Год из двух цифр — этого столетия.</source>
        <translation>How a date is written. Two-digit years are years of this century.</translation>
    </message>
    <message>
        <source>Первая строка — уже бар, а не заголовок.</source>
        <translation>The first line is a bar, not a heading.</translation>
    </message>
    <message>
        <source>ЧИСЛО</source>
        <translation>N</translation>
    </message>
    <message>
        <source>число от 0 до %1</source>
        <translation>a number from 0 to %1</translation>
    </message>
    <message>
        <source>Показать, что хранится.</source>
        <translation>Show what is stored.</translation>
    </message>
    <message>
        <source>--%1 и --%2 нельзя задать вместе</source>
        <translation>--%1 and --%2 cannot be given together</translation>
    </message>
    <message>
        <source>«%1» — не серия; нужно: %2</source>
        <translation>&quot;%1&quot; is not a series; needed: %2</translation>
    </message>
    <message>
        <source>Файл %1 изменился, пока его читали</source>
        <translation>File %1 has changed while it was read</translation>
    </message>
    <message>
        <source>%1: серии нет в отчёте</source>
        <translation>%1: the series is not in the report</translation>
    </message>
    <message>
        <source>Невозможно прочитать каталог %1</source>
        <translation>Cannot read directory %1</translation>
    </message>
    <message>
        <source>Невозможно прочитать каталог %1: того, что в нём, в отчёте нет</source>
        <translation>Cannot read directory %1: what is in it is not in the report</translation>
    </message>
    <message>
        <source>Серия %1 не хранится</source>
        <translation>Series %1 is not stored</translation>
    </message>
    <message>
        <source>Первый день отчёта. Сравниваются всегда все хранимые дни.</source>
        <translation>First day of the report. All stored days are compared whatever is reported.</translation>
    </message>
    <message>
        <source>Последний день отчёта.</source>
        <translation>Last day of the report.</translation>
    </message>
    <message>
        <source>Только бары этой длины.</source>
        <translation>Only bars of this length.</translation>
    </message>
    <message>
        <source>Сколько обычных времён подряд без бара — уже разрыв.</source>
        <translation>How many usual times in a row without a bar are a gap.</translation>
    </message>
    <message>
        <source>целое число от 1</source>
        <translation>an integer from 1</translation>
    </message>
    <message>
        <source>ПРОЦЕНТЫ</source>
        <translation>PERCENT</translation>
    </message>
    <message>
        <source>Открытие бара, которое дальше от закрытия предыдущего бара дня, — скачок.</source>
        <translation>A bar that opens farther than that from the close of the day&apos;s bar before it is a jump.</translation>
    </message>
    <message>
        <source>целое число от 0</source>
        <translation>an integer from 0</translation>
    </message>
    <message>
        <source>Отчёт для программ.</source>
        <translation>A report for programs.</translation>
    </message>
    <message>
        <source>Только то, что стоит запросить у брокера ещё раз: строка «СЕРИЯ ТАЙМФРЕЙМ ДЕНЬ» на каждый день с разрывом и каждый пропущенный день.</source>
        <translation>Only what to ask the broker for again: a line &quot;SERIES TIMEFRAME DAY&quot; for each day with a gap and each missing day.</translation>
    </message>
    <message>
        <source>МЕСЯЦ</source>
        <translation>MONTH</translation>
    </message>
    <message>
        <source>Календарь покрытия этого месяца.</source>
        <translation>A calendar of this month&apos;s coverage.</translation>
    </message>
    <message>
        <source>месяц вида 2024-01</source>
        <translation>a month such as 2024-01</translation>
    </message>
    <message>
        <source>[СЕРИЯ...]</source>
        <translation>[SERIES...]</translation>
    </message>
    <message>
        <source>Найти, чего не хватает и что испорчено.</source>
        <translation>Find what is missing and what is broken.</translation>
    </message>
    <message>
        <source>Ищет в хранимых сериях разрывы, пропущенные дни, строки, которые не записи баров, повторы времени, невозможные цены и скачки. Печатает строку на серию, затем худшие дни. Код завершения 1, когда что-нибудь найдено или не прочитано. Серия, которую нельзя прочитать, названа в стандартном выводе ошибок, остальные в отчёте. Ничего не меняет.</source>
        <translation>Looks in stored series for gaps, missing days, lines that are no bar records, repeated times, impossible prices and jumps. Prints a line for each series, then the worst days. The exit status is 1 when anything was found or could not be read. A series that cannot be read is named on standard error, and the others are reported. Changes nothing.</translation>
    </message>
    <message>
        <source>разрывов: %1 (баров: %2)</source>
        <translation>gaps: %1 (bars: %2)</translation>
    </message>
    <message>
        <source>пропущенных дней: %1</source>
        <translation>missing days: %1</translation>
    </message>
    <message>
        <source>ошибочных строк: %1</source>
        <translation>bad lines: %1</translation>
    </message>
    <message>
        <source>повторов времени: %1</source>
        <translation>repeated times: %1</translation>
    </message>
    <message>
        <source>невозможных цен: %1</source>
        <translation>impossible prices: %1</translation>
    </message>
    <message>
        <source>скачков: %1</source>
        <translation>jumps: %1</translation>
    </message>
    <message>
        <source>строк не по порядку: %1</source>
        <translation>lines out of order: %1</translation>
    </message>
    <message>
        <source>слишком больших объёмов: %1</source>
        <translation>volumes too large: %1</translation>
    </message>
    <message>
        <source>правленых строк: %1</source>
        <translation>edited lines: %1</translation>
    </message>
    <message>
        <source>тихих разрывов: %1</source>
        <translation>quiet gaps: %1</translation>
    </message>
    <message>
        <source>закрытых дней: %1</source>
        <translation>closed days: %1</translation>
    </message>
    <message>
        <source>дней под вопросом: %1</source>
        <translation>days in question: %1</translation>
    </message>
    <message>
        <source>с %1 по %2 (баров: %3)</source>
        <translation>from %1 to %2 (bars: %3)</translation>
    </message>
    <message>
        <source>нет баров %1</source>
        <translation>no bars %1</translation>
    </message>
    <message>
        <source>не записи баров — строки %1</source>
        <translation>no bar records: lines %1</translation>
    </message>
    <message>
        <source>скачки в %1</source>
        <translation>jumps at %1</translation>
    </message>
    <message>
        <source>%1: ничего не хранится</source>
        <translation>%1: nothing is stored</translation>
    </message>
    <message>
        <source>%1: покрытие %2, с %3 по %4, баров: %5; %6</source>
        <translation>%1: coverage %2, from %3 to %4, bars: %5; %6</translation>
    </message>
    <message>
        <source>замечаний нет</source>
        <translation>nothing to remark</translation>
    </message>
    <message>
        <source>нет файла дня</source>
        <translation>no day file</translation>
    </message>
    <message>
        <source>И ещё дней: %1; все — с --json</source>
        <translation>Days beside these: %1; all of them with --json</translation>
    </message>
    <message>
        <source> Пн  Вт  Ср  Чт  Пт  Сб  Вс</source>
        <translation> Mo  Tu  We  Th  Fr  Sa  Su</translation>
    </message>
    <message>
        <source>разрывы ищутся только в минутных барах</source>
        <translation>gaps are looked for in minute bars only</translation>
    </message>
    <message>
        <source>дней без обычных времён: %1</source>
        <translation>days without usual times: %1</translation>
    </message>
    <message>
        <source>обычных времён нет: разрывов не найти</source>
        <translation>no usual times: gaps cannot be found</translation>
    </message>
    <message>
        <source>не задано, что удалить: --from, --to, --timeframe или --all</source>
        <translation>what to delete is missing: --from, --to, --timeframe or --all</translation>
    </message>
    <message>
        <source>--all нельзя вместе с --from, --to и --timeframe</source>
        <translation>--all cannot go with --from, --to and --timeframe</translation>
    </message>
    <message>
        <source>У серии %1 нет ни одного файла</source>
        <translation>The series %1 has no file</translation>
    </message>
    <message>
        <source>У серии %1 уже есть файлы</source>
        <translation>The series %1 has files already</translation>
    </message>
    <message>
        <source>Серия %1 не заблокирована</source>
        <translation>The series %1 is not locked</translation>
    </message>
    <message>
        <source>неизвестно чья</source>
        <translation>it is unknown whose it was</translation>
    </message>
    <message>
        <source>%1, процесс %2, компьютер %3</source>
        <translation>%1, process %2, host %3</translation>
    </message>
    <message>
        <source>Серию %1 меняет программа, которая работает (%2); снять блокировку всё равно: --force</source>
        <translation>The series %1 is being changed by a program that runs (%2); to remove the lock all the same: --force</translation>
    </message>
    <message>
        <source>Блокировка серии %1 снята: %2</source>
        <translation>The lock of the series %1 was removed: %2</translation>
    </message>
    <message>
        <source>СЕРИЯ</source>
        <translation>SERIES</translation>
    </message>
    <message>
        <source>ОТКУДА КУДА</source>
        <translation>FROM TO</translation>
    </message>
    <message>
        <source>Удалить дни серии.</source>
        <translation>Delete days of a series.</translation>
    </message>
    <message>
        <source>Удаляет файлы дней серии и построенные рядом с ними минутные файлы и печатает, сколько файлов удалено. Вернуть их можно командой tadata undo.</source>
        <translation>Removes day files of a series and the minute files derived beside them, and prints how many files were removed. The command tadata undo brings them back.</translation>
    </message>
    <message>
        <source>Первый день.</source>
        <translation>The first day.</translation>
    </message>
    <message>
        <source>Последний день.</source>
        <translation>The last day.</translation>
    </message>
    <message>
        <source>Длина бара. Без него — обе. К секундам относятся и построенные из них минуты.</source>
        <translation>Length of a bar. Without it, both. The minutes derived from seconds belong to the seconds.</translation>
    </message>
    <message>
        <source>Удалить все файлы серии.</source>
        <translation>Remove all files of the series.</translation>
    </message>
    <message>
        <source>Скопировать серию.</source>
        <translation>Copy a series.</translation>
    </message>
    <message>
        <source>Копирует все файлы серии в серию, у которой их ещё нет, и печатает, сколько файлов скопировано.</source>
        <translation>Copies all files of a series into one that has none yet, and prints how many files were copied.</translation>
    </message>
    <message>
        <source>Переименовать серию.</source>
        <translation>Rename a series.</translation>
    </message>
    <message>
        <source>Переносит все файлы серии в серию, у которой их ещё нет, и печатает, сколько файлов перенесено. Опустевший каталог остаётся.</source>
        <translation>Moves all files of a series into one that has none yet, and prints how many files were moved. The emptied directory stays.</translation>
    </message>
    <message>
        <source>Снять с серии блокировку.</source>
        <translation>Remove the lock of a series.</translation>
    </message>
    <message>
        <source>Снимает блокировку серии, которую оставил завершившийся процесс или процесс на другом компьютере, и говорит, чья она была.</source>
        <translation>Removes the lock of a series that a process has left which runs no more or ran on another host, and says whose it was.</translation>
    </message>
    <message>
        <source>И ту, чей процесс работает на этом компьютере.</source>
        <translation>Also one whose process runs on this host.</translation>
    </message>
    <message>
        <source>--undo-on-error нельзя вместе с --no-restore-point</source>
        <translation>--undo-on-error cannot go with --no-restore-point</translation>
    </message>
    <message>
        <source>Если импорт закончится ошибкой или будет прерван, вернуть всё, что он изменил.</source>
        <translation>If the import ends with an error or is interrupted, put back all that it has changed.</translation>
    </message>
    <message>
        <source>Не сохранять того, что импорт заменяет.</source>
        <translation>Keep nothing of what the import replaces.</translation>
    </message>
    <message>
        <source>закончено</source>
        <translation>complete</translation>
    </message>
    <message>
        <source>прервано</source>
        <translation>interrupted</translation>
    </message>
    <message>
        <source>В каталоге %1 нет ни одной точки возврата</source>
        <translation>There is no restore point in the directory %1</translation>
    </message>
    <message>
        <source>Точка %1 не возвращена: эти файлы с тех пор изменились; вернуть всё равно: --force
%2</source>
        <translation>The point %1 was not put back: these files have changed since; to put it back all the same: --force
%2</translation>
    </message>
    <message>
        <source>вернуть %1</source>
        <translation>put back %1</translation>
    </message>
    <message>
        <source>удалить %1</source>
        <translation>remove %1</translation>
    </message>
    <message>
        <source>Точка %1: возвращено файлов: %2, удалено: %3</source>
        <translation>Point %1: files put back: %2, removed: %3</translation>
    </message>
    <message>
        <source>Показать точки возврата.</source>
        <translation>Show the restore points.</translation>
    </message>
    <message>
        <source>Печатает по строке на каждую точку возврата, новые первыми, через табуляцию: имя, время по Гринвичу, задание, закончено оно или прервано, сохранённые файлы, их байты, серии, источник.</source>
        <translation>Prints a line for each restore point, the newest first, separated by tabs: name, time in UTC, job, whether it is complete or was interrupted, kept files, their bytes, series, source.</translation>
    </message>
    <message>
        <source>Напечатать один объект JSON.</source>
        <translation>Print one JSON object.</translation>
    </message>
    <message>
        <source>[ТОЧКА]</source>
        <translation>[POINT]</translation>
    </message>
    <message>
        <source>Вернуть то, что изменила команда.</source>
        <translation>Put back what a command has changed.</translation>
    </message>
    <message>
        <source>Возвращает файлы новейшей точки возврата или названной: прежние файлы возвращаются, созданные заданием удаляются. Возвращение само создаёт точку, так что и его можно отменить. Если файл с тех пор изменился или о нём знает более новая точка, ничего не меняется, а файл назван.</source>
        <translation>Puts back the newest restore point or the one that is named: the former files return, those that the job made are removed. It makes a point itself, so that it can be undone, too. Where a file has changed since, or a newer point holds something of it, nothing is touched and the file is named.</translation>
    </message>
    <message>
        <source>Только показать, что будет сделано.</source>
        <translation>Only show what would be done.</translation>
    </message>
    <message>
        <source>Вернуть и те файлы, которые с тех пор изменились.</source>
        <translation>Put back files that have changed since, too.</translation>
    </message>
    <message>
        <source>Сколько ждать, пока серию меняет другая программа.</source>
        <translation>How long to wait while another program changes the series.</translation>
    </message>
    <message>
        <source>Сколько точек возврата остаётся; 0 — не делать их. Без него — как в настройках терминала, обычно 20.</source>
        <translation>How many restore points stay; 0 makes none. Without it, as the terminal&apos;s settings say, usually 20.</translation>
    </message>
    <message>
        <source>целое число, не меньше 0</source>
        <translation>a whole number, not below 0</translation>
    </message>
    <message>
        <source>Сколько мегабайт точек возврата остаётся. Без него — как в настройках терминала, обычно 1024.</source>
        <translation>How many megabytes of restore points stay. Without it, as the terminal&apos;s settings say, usually 1024.</translation>
    </message>
    <message>
        <source>неверная серия «%1»; нужно: %2</source>
        <translation>wrong series &quot;%1&quot;; needed: %2</translation>
    </message>
    <message>
        <source>Сколько замечаний перечислить; сосчитаны все.</source>
        <translation>How many problems are listed; all are counted.</translation>
    </message>
    <message>
        <source>Код завершения 1 и тогда, когда импорт прошёл бы, но есть замечания, кроме времени 00:00:00 и округлений.</source>
        <translation>Exit status 1 also where the import would come to its end, but there is any problem other than a time 00:00:00 or a rounding.</translation>
    </message>
    <message>
        <source>проверить можно только одну серию: без {ticker}</source>
        <translation>only one series can be checked: without {ticker}</translation>
    </message>
    <message>
        <source>имя файла не подходит на место {name}</source>
        <translation>the name of the file does not fit in the place of {name}</translation>
    </message>
    <message>
        <source>Сказать, что сделает импорт, ничего не меняя.</source>
        <translation>Say what an import would do, and change nothing.</translation>
    </message>
    <message>
        <source>Читает файл и дни хранилища, до которых дошёл бы импорт с теми же параметрами, и говорит, пройдёт ли он до конца, что станет с каждым днём, какие бары пропадут и что в файле не так. Код завершения 0, когда импорт прошёл бы до конца. Ничего не меняет.</source>
        <translation>Reads the file, and the days of the store that an import with the same options would come to, and says whether it would come to its end, what would become of each day, which bars would be lost and what is wrong with the file. The exit status is 0 when the import would come to its end. Changes nothing.</translation>
    </message>
    <message>
        <source>Импорт пройдёт до конца.</source>
        <translation>The import would come to its end.</translation>
    </message>
    <message>
        <source>Импорт не возьмёт ни одной строки: все ошибочные.</source>
        <translation>The import would take no line: all are wrong.</translation>
    </message>
    <message>
        <source>Импорт не начнётся. %1</source>
        <translation>The import would not begin. %1</translation>
    </message>
    <message>
        <source>Импорт закончится на строке %1. %2</source>
        <translation>The import would end at line %1. %2</translation>
    </message>
    <message>
        <source>Баров: %1, строк: %2, ошибочных строк: %3</source>
        <translation>Bars: %1, lines: %2, bad lines: %3</translation>
    </message>
    <message>
        <source>; с %1 по %2</source>
        <translation>; from %1 to %2</translation>
    </message>
    <message>
        <source>; обычно через %1 с</source>
        <translation>; usually %1 s apart</translation>
    </message>
    <message>
        <source>Дней: %1; новых: %2, без изменений: %3, заменяемых: %4, дополняемых: %5</source>
        <translation>Days: %1; new: %2, unchanged: %3, replaced: %4, merged: %5</translation>
    </message>
    <message>
        <source>Пропадёт баров: %1. Больше всего: %2</source>
        <translation>Bars that would be lost: %1. Most of them: %2</translation>
    </message>
    <message>
        <source> (строки %1)</source>
        <translation> (lines %1)</translation>
    </message>
    <message>
        <source>На что посмотреть:</source>
        <translation>To look at:</translation>
    </message>
    <message>
        <source>профиля «%1» нет</source>
        <translation>there is no profile &quot;%1&quot;</translation>
    </message>
    <message>
        <source>Каждый бар один раз, законченным: из идущих подряд строк с одними датой и временем — только последняя.</source>
        <translation>Each bar once, as it is when finished: of successive lines of the same date and time only the last.</translation>
    </message>
    <message>
        <source>Для инструмента, которого нет в справочнике, добавьте --decimals %1.</source>
        <translation>For a security that the reference data do not hold, add --decimals %1.</translation>
    </message>
    <message>
        <source>Угадать формат текстового файла с барами.</source>
        <translation>Guess the format of a text file of bars.</translation>
    </message>
    <message>
        <source>Угадывает разделитель, заголовок, столбцы, вид даты и времени и таймфрейм по первой и последней тысяче строк файла, каким бы большим он ни был, и печатает команду импорта с ними. Если вид даты неоднозначен, команд несколько. Код завершения 1, когда для импорта чего-то не хватает; чего — сказано в стандартном выводе ошибок. Ничего не меняет.</source>
        <translation>Guesses separator, header, columns, forms of date and time, and timeframe from the first and the last thousand lines of a file, however large it is, and prints the import command with them. Where the form of the dates is ambiguous there are several commands. The exit code is 1 when an import would need more; standard error says what. Changes nothing.</translation>
    </message>
    <message>
        <source>Не найден разделитель: ни один не делит строки на одинаковое число полей, не меньше шести.</source>
        <translation>No separator was found: none divides the lines into the same number of fields, at least six.</translation>
    </message>
    <message>
        <source>Не найден столбец даты.</source>
        <translation>No column of dates was found.</translation>
    </message>
    <message>
        <source>Не найден столбец времени.</source>
        <translation>No column of times was found.</translation>
    </message>
    <message>
        <source>Не найдены столбцы цен: open, high, low и close.</source>
        <translation>No columns of prices were found: open, high, low and close.</translation>
    </message>
    <message>
        <source>Вид даты неоднозначен, подходят: %1.</source>
        <translation>The form of the dates is ambiguous; these fit: %1.</translation>
    </message>
    <message>
        <source>Столбец объёма не будет импортирован: в нём не целые числа.</source>
        <translation>The column of the volume will not be imported: it holds no whole numbers.</translation>
    </message>
    <message>
        <source>Столбец открытого интереса не будет импортирован: в нём не целые числа.</source>
        <translation>The column of the open interest will not be imported: it holds no whole numbers.</translation>
    </message>
    <message>
        <source>он — только для одного файла</source>
        <translation>it is for one file only</translation>
    </message>
    <message>
        <source>Сколько файлов импортировать одновременно. Файлы одной серии всегда идут друг за другом.</source>
        <translation>How many files are imported at once. Files of one series always come one after the other.</translation>
    </message>
    <message>
        <source>число от 1 до %1</source>
        <translation>a number from 1 to %1</translation>
    </message>
    <message>
        <source>После первого неудавшегося файла не начинать следующих.</source>
        <translation>Begin no file after one has failed.</translation>
    </message>
    <message>
        <source>ФАЙЛ...</source>
        <translation>FILE...</translation>
    </message>
    <message>
        <source>Код &apos;%1&apos; не может быть именем каталога</source>
        <translation>The code &apos;%1&apos; cannot be the name of a directory</translation>
    </message>
    <message>
        <source>Баров: %1, дней: %2, ошибочных строк: %3</source>
        <translation>Bars: %1, days: %2, bad lines: %3</translation>
    </message>
    <message>
        <source>Ни одного бара не импортировано: все строки файла %1 ошибочны</source>
        <translation>No bar was imported: all lines of file %1 are bad</translation>
    </message>
    <message>
        <source>Файлов: %1, не удалось: %2, не начато: %3, баров: %4, дней: %5, ошибочных строк: %6, секунд: %7</source>
        <translation>Files: %1, failed: %2, not begun: %3, bars: %4, days: %5, bad lines: %6, seconds: %7</translation>
    </message>
    <message>
        <source>Файл %1:</source>
        <translation>File %1:</translation>
    </message>
    <message>
        <source>--series: из имени файла «%1» не получается код</source>
        <translation>--series: the name of file &quot;%1&quot; does not give a code</translation>
    </message>
    <message>
        <source>такой файл уже есть</source>
        <translation>there is such a file already</translation>
    </message>
    <message>
        <source>ПОЯС</source>
        <translation>ZONE</translation>
    </message>
    <message>
        <source>имя часового пояса, например Europe/Moscow</source>
        <translation>the name of a time zone such as Europe/Moscow</translation>
    </message>
    <message>
        <source>Куда записать пропущенные ошибочные строки, байт в байт, после заголовка исходного файла. Создаётся с первой из них; включает --skip-bad. Только для одного файла.</source>
        <translation>Where the bad lines that are passed over go, byte for byte, after the header of the input. Made with the first of them; implies --skip-bad. For one file only.</translation>
    </message>
    <message>
        <source>имя файла, которого ещё нет</source>
        <translation>the name of a file that does not exist yet</translation>
    </message>
    <message>
        <source>Что несёт каждый столбец. Роли date, time, open, high, low и close обязательны; могут быть volume (объём в штуках), value (объём в деньгах), oi (открытый интерес) и ticker (код для {ticker}). Без него вид файла, который не задан, угадывается, как командой guess.</source>
        <translation>What each column carries. The roles date, time, open, high, low and close are mandatory; volume (in pieces), value (in money), oi (open interest) and ticker (the code for {ticker}) may be there. Without it what is not given of the file&apos;s format is guessed, as by the command guess.</translation>
    </message>
    <message>
        <source>через запятую роль и номер её столбца, считая от 0; роли date, time, open, high, low, close, volume, value, oi, ticker</source>
        <translation>separated by commas a role and the number of its column, counted from 0; the roles are date, time, open, high, low, close, volume, value, oi, ticker</translation>
    </message>
    <message>
        <source>вид файла %1 угадать не удалось; задайте --columns и остальное</source>
        <translation>the format of file %1 could not be guessed; give --columns and the rest</translation>
    </message>
    <message>
        <source>Взято для файла %1: %2</source>
        <translation>Taken for file %1: %2</translation>
    </message>
    <message>
        <source>На месте {name} — имя файла до последней точки, на месте {ticker} — код из столбца с ролью ticker.</source>
        <translation>{name} stands for the file&apos;s name up to its last dot, {ticker} for the code in the column of the role ticker.</translation>
    </message>
    <message>
        <source>%1 или другой вид, в котором есть число (d или dd), месяц (M или MM) и год (yy или yyyy); большие и малые буквы различаются</source>
        <translation>%1 or another pattern that has a day (d or dd), a month (M or MM) and a year (yy or yyyy); capital and small letters differ</translation>
    </message>
    <message>
        <source>%1 или другой вид, в котором есть часы (h или hh); большие и малые буквы различаются</source>
        <translation>%1 or another pattern that has hours (h or hh); capital and small letters differ</translation>
    </message>
    <message>
        <source>нет столбца с ролью «ticker»</source>
        <translation>there is no column of the role &quot;ticker&quot;</translation>
    </message>
    <message>
        <source>СПОСОБ</source>
        <translation>MODE</translation>
    </message>
    <message>
        <source>Что станет с хранимыми барами тех же дней: replace — дни файла заменяются целиком; merge — бары файла добавляются и заменяют бары с тем же временем; fill — добавляются только бары, времени которых в хранилище нет.</source>
        <translation>What becomes of stored bars of the same days: replace: the file&apos;s days are replaced as a whole; merge: the file&apos;s bars come in and replace those of their times; fill: only bars come in whose times are not stored.</translation>
    </message>
    <message>
        <source>КОНЕЦ</source>
        <translation>END</translation>
    </message>
    <message>
        <source>Какое время стоит у баров файла: конца бара (end) или его начала (begin); к началу прибавляется длина бара.</source>
        <translation>Which time the file&apos;s bars carry: that of the bar&apos;s end (end) or of its beginning (begin); to a beginning the length of a bar is added.</translation>
    </message>
    <message>
        <source>По часам какого пояса время в файле.</source>
        <translation>The zone by whose clock the file has its times.</translation>
    </message>
    <message>
        <source>По часам какого пояса время в хранилище.</source>
        <translation>The zone by whose clock the store has its times.</translation>
    </message>
    <message>
        <source>МИНУТЫ</source>
        <translation>MINUTES</translation>
    </message>
    <message>
        <source>Сколько минут прибавить ко времени, после смены пояса.</source>
        <translation>How many minutes are added to the time, after the change of the zone.</translation>
    </message>
    <message>
        <source>целое число от -1440 до 1440</source>
        <translation>a whole number from -1440 to 1440</translation>
    </message>
    <message>
        <source>Ошибочные строки пропускать; в конце печатается, сколько баров, дней и ошибочных строк.</source>
        <translation>Pass over bad lines; at the end the numbers of bars, days and bad lines are printed.</translation>
    </message>
    <message>
        <source>ИМЯ</source>
        <translation>NAME</translation>
    </message>
    <message>
        <source>Параметры, сохранённые командой tadata profile save. Заданные в командной строке важнее.</source>
        <translation>Options that were saved by tadata profile save. Those of the command line win.</translation>
    </message>
    <message>
        <source>имя профиля</source>
        <translation>the name of a profile</translation>
    </message>
    <message>
        <source>столбцов: %1, нужно: %2</source>
        <translation>columns: %1, needed: %2</translation>
    </message>
    <message>
        <source>; похоже на другой разделитель: --separator %1</source>
        <translation>; it looks like another separator: --separator %1</translation>
    </message>
    <message>
        <source>%1: нужно %2</source>
        <translation>%1: %2 was asked for</translation>
    </message>
    <message>
        <source>; похоже на %1: --%2 %3</source>
        <translation>; looks like %1: --%2 %3</translation>
    </message>
    <message>
        <source> или </source>
        <translation> or </translation>
    </message>
    <message>
        <source>%1: нужно целое число, например 1250</source>
        <translation>%1: a whole number such as 1250 was asked for</translation>
    </message>
    <message>
        <source>%1: нужно число, например 1250.75</source>
        <translation>%1: a number such as 1250.75 was asked for</translation>
    </message>
    <message>
        <source>; поле пустое</source>
        <translation>; the field is empty</translation>
    </message>
    <message>
        <source>; вокруг него пробелы</source>
        <translation>; there are blanks around it</translation>
    </message>
    <message>
        <source>; оно в кавычках</source>
        <translation>; it is in quotes</translation>
    </message>
    <message>
        <source>; вместо точки запятая</source>
        <translation>; it has a comma for its point</translation>
    </message>
    <message>
        <source>date: нужно %1; похоже на заголовок: уберите --no-header</source>
        <translation>date: %1 was asked for; it looks like a header: leave --no-header out</translation>
    </message>
    <message>
        <source>ticker: нужно имя каталога</source>
        <translation>ticker: the name of a directory was asked for</translation>
    </message>
    <message>
        <source>неверное имя профиля «%1»; нужно: непустое имя без «/», «\», пробелов по краям и управляющих символов, не с «-» в начале</source>
        <translation>wrong name of a profile &quot;%1&quot;; right is: a name that is not empty, without &quot;/&quot;, &quot;\&quot;, blanks at its ends and control characters, and with no &quot;-&quot; at its beginning</translation>
    </message>
    <message>
        <source>не задано ни одного параметра, который сохранить</source>
        <translation>no option was given to save</translation>
    </message>
    <message>
        <source>неизвестное действие «%1»; нужно: %2</source>
        <translation>unknown action &quot;%1&quot;; right is: %2</translation>
    </message>
    <message>
        <source>profile %1 не принимает параметров</source>
        <translation>profile %1 takes no options</translation>
    </message>
    <message>
        <source>save|show|delete ИМЯ | list</source>
        <translation>save|show|delete NAME | list</translation>
    </message>
    <message>
        <source>Сохранить параметры под именем для --profile.</source>
        <translation>Save options under a name for --profile.</translation>
    </message>
    <message>
        <source>save сохраняет параметры, которые import, check и guess возьмут по --profile ИМЯ, вместо прежних того же имени; list печатает имена, show — параметры, delete забывает их. Они лежат в настройках терминала.</source>
        <translation>save keeps options that import, check and guess take by --profile NAME, in place of earlier ones of that name; list prints the names, show the options, delete forgets them. They are in the terminal&apos;s settings.</translation>
    </message>
    <message>
        <source>; похоже на %1</source>
        <translation>; it resembles %1</translation>
    </message>
    <message>
        <source>Импортировать бары из текстовых файлов.</source>
        <translation>Import bars from text files.</translation>
    </message>
    <message>
        <source>Импортирует бары из текстовых файлов, по порядку. Файл дня заменяется целиком каждый раз, когда в файле начинается этот день; --mode говорит, если нужно иначе. Вид файла угадывается, если не задан --columns. Если в файле нет ни одного бара, об этом сказано в стандартном выводе ошибок, код завершения 0.</source>
        <translation>Imports bars from text files, one after the other. A day&apos;s file is replaced as a whole each time a file comes to that day, unless --mode says otherwise. The format of a file is guessed unless --columns is given. That a file holds no bar is said on standard error, with exit code 0.</translation>
    </message>
    <message>
        <source>Знаков после точки в ценах. Без него — как в справочнике; для инструмента, которого там нет, — как в файле, а с --columns обязателен.</source>
        <translation>Digits after the point of prices. Without it as in the reference data; for a security that they do not hold, as in the file, but with --columns it is mandatory.</translation>
    </message>
    <message>
        <source>неизвестно</source>
        <translation>unknown</translation>
    </message>
    <message>
        <source>%1 — покрытие дня от меньшего к полному; ~ — бары есть, обычных времён нет; ! — пропущенный день, x — закрытый, ? — под вопросом</source>
        <translation>%1: the coverage of a day, from the least to all; ~: bars, but no usual times; !: a missing day, x: a closed one, ?: one in question</translation>
    </message>
    <message>
        <source>Всё, что импорт изменил, возвращено.</source>
        <translation>Everything that the import has changed was put back.</translation>
    </message>
    <message>
        <source>Для инструмента, которого нет в справочнике: --decimals %1</source>
        <translation>For an instrument that the reference data do not hold: --decimals %1</translation>
    </message>
    <message>
        <source>В файле есть столбец инструментов: если их в нём несколько, для каждого нужна своя серия — {ticker} в --series</source>
        <translation>The file has a column of instruments: if there are several in it, each needs a series of its own — {ticker} in --series</translation>
    </message>
    <message>
        <source>такого места нет; похоже на %1</source>
        <translation>there is no such place; did you mean %1</translation>
    </message>
    <message>
        <source>Столбцы, которые не взяты: %1; нужный называют в --columns</source>
        <translation>Columns that are not taken: %1; name the one you need in --columns</translation>
    </message>
    <message>
        <source>%1: часы этого компьютера пропускают время с %2 до %3, и его бары могли слиться с соседними. С TZ=UTC перед командой каждый из них выгружается сам</source>
        <translation>%1: the clock of this computer skips the time from %2 to %3, and its bars may be folded with their neighbours. With TZ=UTC before the command each of them is exported by itself</translation>
    </message>
    <message>
        <source>Не всё, что импорт изменил, возвращено.</source>
        <translation>Not all that the import has changed was put back.</translation>
    </message>
    <message>
        <source>То, что импорт изменил, осталось в хранилище.</source>
        <translation>What the import has changed stays in the store.</translation>
    </message>
    <message>
        <source>Команда, которую она сохранила, ничего не изменила.</source>
        <translation>The command of this point has changed nothing.</translation>
    </message>
    <message>
        <source>Вернуть то, что изменила предыдущая (%1, %2): tadata undo %3</source>
        <translation>To put back what the one before it has changed (%1, %2): tadata undo %3</translation>
    </message>
    <message>
        <source>Невозможно узнать, куда ведёт %1: %2</source>
        <translation>Cannot tell where %1 leads: %2</translation>
    </message>
    <message>
        <source>Печатает по строке на каждую серию и таймфрейм, через табуляцию: серия, таймфрейм в секундах, число файлов дней, первый и последний день, байты. Управляющие символы в кодах печатаются в виде \x0a и \u2028. Каталог, который нельзя прочитать, и ссылка, которая никуда не ведёт, названы в стандартном выводе ошибок; код завершения тогда 1, остальное напечатано.</source>
        <translation>Prints one line for each series and timeframe, separated by tabs: series, timeframe in seconds, number of day files, first and last day, bytes. Control characters in codes are printed as \x0a and \u2028. A directory that cannot be read, and a link that leads nowhere, are named on standard error; the exit status is then 1, and the rest is printed.</translation>
    </message>
    <message>
        <source>Файл %1 меняли, пока шла выгрузка: повторите её</source>
        <translation>The file %1 was being changed during the export: repeat it</translation>
    </message>
    <message>
        <source>tadata: команда не закончена: %1</source>
        <translation>tadata: the command did not end: %1</translation>
    </message>
    <message>
        <source>Минутные файлы записанных дней могут быть неполными.</source>
        <translation>The minute files of the days written may lack bars.</translation>
    </message>
    <message>
        <source>Минутные файлы записанных дней могут быть неполными: прежде чем повторять импорт, отмените этот (tadata undo).</source>
        <translation>The minute files of the days written may lack bars: before repeating the import, take this one back (tadata undo).</translation>
    </message>
    <message>
        <source>в кодах не может быть того, что не UTF-8</source>
        <translation>the codes may hold nothing that is not UTF-8</translation>
    </message>
</context>
</TS>
