' A host in a script: a data class over rows in memory that filters and sorts, and a sink that prints what it hears.
Option Explicit

Class Celda
    Public Name
    Public Value
End Class

Class Registro
    Public Celdas
    Public Property Get Count
        Count = UBound(Celdas) + 1
    End Property
    Public Function Item(numero)
        Set Item = Celdas(numero)
    End Function
End Class

Class Clientes
    Public Todas
    Public Filas
    Public Filtro
    Public Guardado
    Public AbsolutePosition
    Public Property Get sClassName
        sClassName = "Clientes"
    End Property
    Public Property Get RecordCount
        RecordCount = UBound(Filas) + 1
    End Property
    Public Property Get existenregistros
        existenregistros = RecordCount > 0
    End Property
    Public Property Get BOF
        BOF = AbsolutePosition < 1
    End Property
    Public Property Get EOF
        EOF = AbsolutePosition > RecordCount
    End Property
    Public Property Get Fields
        Set Fields = Filas(AbsolutePosition - 1)
    End Property
    Public Sub MoveFirst
        AbsolutePosition = 1
    End Sub
    Public Sub MoveLast
        AbsolutePosition = RecordCount
    End Sub
    Public Sub MoveNext
        AbsolutePosition = AbsolutePosition + 1
    End Sub
    Public Sub MovePrevious
        AbsolutePosition = AbsolutePosition - 1
    End Sub
    Public Sub FindRecord(texto)
        Dim i
        For i = 0 To UBound(Filas)
            If Filas(i).Item(0).Value = texto Then AbsolutePosition = i + 1
        Next
        WScript.Echo "FindRecord " & texto
    End Sub
    Public Function CreateFilter(caja)
        WScript.Echo "CreateFilter " & caja.Name & " " & caja.Index & " " & caja.DataField & " " & caja.Text
        CreateFilter = caja.Text
    End Function
    Public Sub SetFilter(texto, hueco)
        WScript.Echo "SetFilter " & texto & " " & hueco
        Guardado = texto
    End Sub
    Public Function GetFilter(hueco)
        GetFilter = Guardado
    End Function
    Public Sub AplyFilter(texto)
        WScript.Echo "AplyFilter [" & texto & "]"
        Filtro = texto
    End Sub
    Public Sub Requery(consulta)
        Dim i, fila
        WScript.Echo "Requery " & consulta
        Filas = Array()
        For i = 0 To UBound(Todas)
            Set fila = Todas(i)
            If Filtro = "" Or InStr(fila.Item(0).Value, Filtro) > 0 Then
                Filas = Anadida(Filas, fila)
            End If
        Next
        AbsolutePosition = 1
    End Sub
End Class

Class Pantalla
    Public Text
    Public Sub AceptarSeleccion(indice, ctl, valor)
        WScript.Echo "AceptarSeleccion " & TypeName(indice) & " " & indice & ", " & ctl.Text & ", " & TypeName(valor) & " " & valor
        ctl.Text = valor
    End Sub
End Class

Function Anadida(lista, fila)
    Dim nueva, i, n
    n = UBound(lista) + 1
    If n = 0 Then
        nueva = Array(fila)
    ElseIf n = 1 Then
        nueva = Array(lista(0), fila)
    Else
        nueva = Array(lista(0), lista(1), fila)
    End If
    Anadida = nueva
End Function

Function Cliente(codigo, nombre)
    Dim uno, otro
    Set uno = New Celda
    uno.Name = "Codigo"
    uno.Value = codigo
    Set otro = New Celda
    otro.Name = "Nombre"
    otro.Value = nombre
    Set Cliente = New Registro
    Cliente.Celdas = Array(uno, otro)
End Function

Dim datos, campo
Set datos = New Clientes
Set campo = New Pantalla
datos.Todas = Array(Cliente("C-1", "Iba" & Chr(241) & "ez"), Cliente("C-2", "Pe" & Chr(241) & "a"), Cliente("C-3", "Ord" & Chr(243) & Chr(241) & "ez"))
datos.Filas = Array()
datos.Filtro = ""
campo.Text = "C-2"
CreateObject("Tamvelo.ClsShowSerch").ShowSelec campo, datos, campo, 0, 0, True, False
WScript.Echo "En el campo: " & campo.Text
